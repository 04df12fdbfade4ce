// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>

namespace simulator {

/// The descriptor of the connection that this process has accepted at a port of its own from that
/// address and port; -1 when there is none. It stays the HTTP library's and must be used only in
/// the thread that serves it, whose request keeps it open.
int findConnection(int localPort, const std::string& peerAddress, int peerPort);

/// Lets nothing more be read from the connections that this process has accepted at a port of its
/// own: they end at once. An answer that is being made on one of them is lost.
/// (The HTTP library waits for idle connections and offers no way to reach them.)
void stopReading(int localPort);

} // namespace simulator

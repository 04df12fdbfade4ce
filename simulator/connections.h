// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace simulator {

/// Lets nothing more be read from the connections that this process has accepted at a port of its
/// own: they end at once. An answer that is being made on one of them is lost.
/// (The HTTP library waits for idle connections and offers no way to reach them.)
void stopReading(int localPort);

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

namespace till::verify {

/// The bytes as gzip packs them, for a request that comes compressed. The server for trying packs
/// its answers with code of its own: a mistake here must not meet the same one there.
QByteArray gzipped(const QByteArray& bytes);

} // namespace till::verify

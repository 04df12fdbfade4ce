// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

namespace simulator {

/// The bytes as gzip (RFC 1952) has them.
QByteArray gzipped(const QByteArray& bytes);

} // namespace simulator

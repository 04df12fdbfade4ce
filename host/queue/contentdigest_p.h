// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

namespace poshost {

struct QueueMessage;

/// What tells whether a stored message is still the one that was stored. It guards against damage,
/// not against people: a cryptographic digest would take a fifth of what closing a long check
/// takes. Any thread.
namespace contentdigest {

/// @return 8 bytes, the same on every machine; a change in up to 8 bytes that lie together always
/// makes others of them, any other change does but once in 2^64 times
QByteArray of(const QueueMessage& message);

/// @param stored of this version or of one that stored a SHA-1
bool isOf(const QByteArray& stored, const QueueMessage& message);

} // namespace contentdigest
} // namespace poshost

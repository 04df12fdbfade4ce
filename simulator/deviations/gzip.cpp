// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/deviations/gzip.h"

#include <QtEndian>

namespace simulator {
namespace {

/// What gzip ends with, which Qt's own compression does not give.
quint32 checksum(const QByteArray& bytes)
{
    constexpr quint32 polynomial = 0xEDB88320;
    quint32 value = ~quint32(0);
    for (const char byte : bytes) {
        value ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            value = (value >> 1) ^ ((value & 1) != 0 ? polynomial : 0);
        }
    }
    return ~value;
}

QByteArray number(quint32 value)
{
    QByteArray bytes(sizeof value, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

} // namespace

QByteArray gzipped(const QByteArray& bytes)
{
    constexpr qsizetype before = 4 + 2; // the length that Qt adds, and what zlib begins with
    constexpr qsizetype behind = 4;
    const QByteArray packed = qCompress(bytes);
    const QByteArray head("\x1f\x8b\x08\0\0\0\0\0\0\xff", 10);
    return head + packed.sliced(before).chopped(behind) + number(checksum(bytes)) +
           number(static_cast<quint32>(bytes.size()));
}

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/gzip.h"

#include <QtEndian>

namespace till::verify {
namespace {

constexpr qsizetype lengthOfQt = 4;  ///< stands before what qCompress makes
constexpr qsizetype headOfZlib = 2;  ///< and behind it comes
constexpr qsizetype checkOfZlib = 4; ///< what gzip has in a form of its own

/// CRC-32 as gzip wants it.
quint32 checkOf(const QByteArray& bytes)
{
    constexpr quint32 polynomial = 0xEDB88320;
    constexpr int bitsOfByte = 8;
    quint32 rest = 0xFFFFFFFF;
    for (const char byte : bytes) {
        rest ^= quint8(byte);
        for (int bit = 0; bit < bitsOfByte; ++bit) {
            const bool isOdd = rest % 2 == 1;
            rest = isOdd ? (rest / 2) ^ polynomial : rest / 2;
        }
    }
    return ~rest;
}

void append(QByteArray& bytes, quint32 number)
{
    const quint32 little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

} // namespace

QByteArray gzipped(const QByteArray& bytes)
{
    const QByteArray packed = qCompress(bytes).sliced(lengthOfQt + headOfZlib).chopped(checkOfZlib);
    QByteArray all = QByteArray::fromHex("1f8b08000000000000ff") + packed;
    append(all, checkOf(bytes));
    append(all, quint32(bytes.size()));
    return all;
}

} // namespace till::verify

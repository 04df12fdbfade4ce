// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/contentdigest_p.h"

#include "host/queue/queuemessage.h"

#include <QCryptographicHash>
#include <QtEndian>

#include <cstring>

namespace poshost::contentdigest {
namespace {

constexpr qsizetype wordSize = sizeof(quint64);

/// Different words or states always give different states: an odd factor loses nothing, and neither
/// does what follows.
quint64 mixed(quint64 state, quint64 word)
{
    constexpr quint64 oddFactor = 0x9E37'79B9'7F4A'7C15;
    constexpr int half = 32;
    const quint64 product = (state ^ word) * oddFactor;
    return product ^ (product >> half);
}

/// Its length comes first, so that what ends one part never passes for what begins the next one.
quint64 withPart(quint64 state, const QByteArray& part)
{
    state = mixed(state, quint64(part.size()));
    const char* at = part.constData();
    qsizetype left = part.size();
    for (; left >= wordSize; left -= wordSize, at += wordSize) {
        state = mixed(state, qFromLittleEndian<quint64>(at));
    }
    char rest[wordSize] = {};
    std::memcpy(rest, at, size_t(left));
    return mixed(state, qFromLittleEndian<quint64>(rest));
}

QByteArray sha1Of(const QueueMessage& message)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const QByteArray& part : {message.payload, message.headers, message.urls}) {
        hash.addData(QByteArray::number(part.size()) + ':');
        hash.addData(part);
    }
    return hash.result();
}

} // namespace

QByteArray of(const QueueMessage& message)
{
    quint64 state = 1; // from 0 on, zeros would leave it 0
    for (const QByteArray* part : {&message.payload, &message.headers, &message.urls}) {
        state = withPart(state, *part);
    }
    QByteArray bytes(wordSize, Qt::Uninitialized);
    qToBigEndian(state, bytes.data());
    return bytes;
}

bool isOf(const QByteArray& stored, const QueueMessage& message)
{
    const bool isSha1 = stored.size() == QCryptographicHash::hashLength(QCryptographicHash::Sha1);
    return stored == (isSha1 ? sha1Of(message) : of(message));
}

} // namespace poshost::contentdigest

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/storedvalues.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace till::storedvalues {
namespace {

constexpr int deepest = 32;

/// What Qt reads without making room for more than there is.
constexpr std::array plainTypes{
    QMetaType::UnknownType, QMetaType::Nullptr,   QMetaType::Bool,       QMetaType::Int,
    QMetaType::UInt,        QMetaType::Long,      QMetaType::ULong,      QMetaType::LongLong,
    QMetaType::ULongLong,   QMetaType::Short,     QMetaType::UShort,     QMetaType::Char,
    QMetaType::SChar,       QMetaType::UChar,     QMetaType::Double,     QMetaType::Float,
    QMetaType::QChar,       QMetaType::QString,   QMetaType::QByteArray, QMetaType::QDate,
    QMetaType::QTime,       QMetaType::QDateTime, QMetaType::QUrl,       QMetaType::QUuid,
};

bool isSound(const QDataStream& stream)
{
    return stream.status() == QDataStream::Ok;
}

/// Calls for each of the elements whose number comes first.
template <typename Read>
void readEach(QDataStream& stream, const Read& read)
{
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count && isSound(stream); ++i) {
        read();
    }
}

/// The type of the variant that comes next, which stays to be read: a number, since a damaged one
/// need not be a type.
int nextType(QDataStream& stream)
{
    const QByteArray bytes = stream.device()->peek(sizeof(quint32));
    if (bytes.size() != sizeof(quint32)) {
        stream.setStatus(QDataStream::ReadPastEnd);
        return QMetaType::UnknownType;
    }
    return qFromBigEndian<qint32>(bytes.constData());
}

/// A variant's type and whether it is null stand before its value.
void passHead(QDataStream& stream)
{
    quint32 type = 0;
    qint8 isNull = 0;
    stream >> type >> isNull;
}

QVariant readAny(QDataStream& stream, int depth);

QVariantMap readMapAt(QDataStream& stream, int depth)
{
    QVariantMap map;
    readEach(stream, [&] {
        QString key;
        stream >> key;
        map.insert(key, readAny(stream, depth + 1));
    });
    return map;
}

QVariantList readListAt(QDataStream& stream, int depth)
{
    QVariantList list;
    readEach(stream, [&] { list.append(readAny(stream, depth + 1)); });
    return list;
}

QVariant readAny(QDataStream& stream, int depth)
{
    const int type = nextType(stream);
    QVariant value;
    if (depth > deepest || !isSound(stream)) {
        stream.setStatus(QDataStream::ReadCorruptData);
    } else if (std::find(plainTypes.cbegin(), plainTypes.cend(), type) != plainTypes.cend()) {
        stream >> value;
    } else if (type == QMetaType::QVariantMap) {
        passHead(stream);
        value = readMapAt(stream, depth);
    } else if (type == QMetaType::QVariantList) {
        passHead(stream);
        value = readListAt(stream, depth);
    } else if (type == QMetaType::QStringList) {
        passHead(stream);
        value = readTexts(stream);
    } else {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    return value;
}

} // namespace

QStringList readTexts(QDataStream& stream)
{
    QStringList texts;
    readEach(stream, [&] {
        QString text;
        stream >> text;
        texts.append(text);
    });
    return texts;
}

QVariantMap readMap(QDataStream& stream)
{
    return readMapAt(stream, 0);
}

QVariant readVariant(QDataStream& stream)
{
    return readAny(stream, 0);
}

} // namespace till::storedvalues

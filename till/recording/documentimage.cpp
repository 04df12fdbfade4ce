// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/documentimage.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

namespace till {

template <typename Value>
void DocumentImage::append(Value value)
{
    all.append(reinterpret_cast<const char*>(&value), sizeof(value));
}

void DocumentImage::add(const QString& /*name*/, bool value)
{
    append('b');
    append(value);
}

void DocumentImage::add(const QString& /*name*/, int value)
{
    append('i');
    append(value);
}

void DocumentImage::add(const QString& /*name*/, qint64 value)
{
    append('l');
    append(value);
}

void DocumentImage::add(const QString& /*name*/, double value)
{
    append('d');
    append(value);
}

void DocumentImage::add(const QString& /*name*/, const QString& value)
{
    append('s');
    append(value.size());
    all.append(reinterpret_cast<const char*>(value.constData()),
               static_cast<size_t>(value.size()) * sizeof(QChar));
}

/// By its wall clock, which is what is recorded: the zone of a local time takes long to ask for.
void DocumentImage::add(const QString& /*name*/, const QDateTime& value)
{
    append('t');
    append(value.date().toJulianDay());
    append(value.time().msecsSinceStartOfDay());
    append(int(value.timeSpec()));
    append(value.timeSpec() == Qt::LocalTime ? 0 : value.offsetFromUtc());
}

void DocumentImage::add(const QString& name, const QVariant& value)
{
    append('v');
    append(value.typeId());
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return;
    case QMetaType::Int:
        add(name, value.toInt());
        return;
    case QMetaType::Double:
        add(name, value.toDouble());
        return;
    case QMetaType::QString:
        add(name, value.toString());
        return;
    case QMetaType::QDateTime:
        add(name, value.toDateTime());
        return;
    default: {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << value;
        append(bytes.size());
        all.append(bytes.toStdString());
    }
    }
}

void DocumentImage::add(const QString& /*name*/, const QMap<int, double>& value)
{
    append('m');
    append(value.size());
    for (auto it = value.cbegin(); it != value.cend(); ++it) {
        append(it.key());
        append(it.value());
    }
}

} // namespace till

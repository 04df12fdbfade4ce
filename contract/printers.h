// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Guarded by a name: precompiled, it is not known as the file that a copy of the tree includes.
#ifndef CONTRACT_PRINTERS_H
#define CONTRACT_PRINTERS_H

#include <QByteArray>
#include <QChar>
#include <QDate>
#include <QDateTime>
#include <QDebug>
#include <QDomNode>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QTime>
#include <QUrl>
#include <QVariant>

#include <concepts>
#include <gtest/gtest.h>
#include <ostream>

// How GoogleTest shows Qt's values: as text. It finds these by the arguments' types, so they are in
// the global namespace. Every file of a test program includes this header (the build of the tests
// here does it for them), or the program would have two printers for one type. Lists need none of
// their own: GoogleTest shows the elements of whatever has iterators.

inline void PrintTo(QStringView value, std::ostream* out)
{
    *out << '"' << value.toUtf8().toStdString() << '"';
}

inline void PrintTo(const QString& value, std::ostream* out)
{
    if (value.isNull()) {
        *out << "(null)";
    } else {
        PrintTo(QStringView(value), out);
    }
}

inline void PrintTo(QLatin1StringView value, std::ostream* out)
{
    PrintTo(QString(value), out);
}

inline void PrintTo(QChar value, std::ostream* out)
{
    *out << '\'' << QString(value).toStdString() << '\'';
}

/// Bytes that are no text are shown as hexadecimal numbers.
inline void PrintTo(const QByteArray& value, std::ostream* out)
{
    if (value.isNull()) {
        *out << "(null)";
    } else if (value.isValidUtf8()) {
        *out << '"' << value.toStdString() << '"';
    } else {
        *out << "bytes " << value.toHex(' ').toStdString();
    }
}

inline void PrintTo(const QUrl& value, std::ostream* out)
{
    *out << value.toString().toStdString();
}

inline void PrintTo(const QDate& value, std::ostream* out)
{
    *out << (value.isValid() ? value.toString(Qt::ISODate).toStdString() : "(no date)");
}

inline void PrintTo(const QTime& value, std::ostream* out)
{
    *out << (value.isValid() ? value.toString(Qt::ISODateWithMs).toStdString() : "(no time)");
}

inline void PrintTo(const QDateTime& value, std::ostream* out)
{
    *out << (value.isValid() ? value.toString(Qt::ISODateWithMs).toStdString() : "(no time)");
}

/// With its type: QVariant(int, 5) and QVariant(QString, "5") are different.
inline void PrintTo(const QVariant& value, std::ostream* out)
{
    *out << QDebug::toString(value).toStdString();
}

template <std::derived_from<QDomNode> Node>
void PrintTo(const Node& value, std::ostream* out)
{
    if (value.isNull()) {
        *out << "(no node)";
    } else {
        QString text;
        QTextStream stream(&text);
        value.save(stream, 1);
        *out << text.trimmed().toStdString();
    }
}

inline void PrintTo(const QJsonObject& value, std::ostream* out)
{
    *out << QJsonDocument(value).toJson(QJsonDocument::Compact).toStdString();
}

inline void PrintTo(const QJsonArray& value, std::ostream* out)
{
    *out << QJsonDocument(value).toJson(QJsonDocument::Compact).toStdString();
}

inline void PrintTo(const QJsonValue& value, std::ostream* out)
{
    *out << QDebug::toString(value).toStdString();
}

/// GoogleTest would show the values of a map without their keys.
template <typename Map>
requires std::same_as<Map, QMap<typename Map::key_type, typename Map::mapped_type>> ||
    std::same_as<Map, QHash<typename Map::key_type, typename Map::mapped_type>>
void PrintTo(const Map& value, std::ostream* out)
{
    *out << '{';
    const char* separator = " ";
    for (auto entry = value.cbegin(); entry != value.cend(); ++entry) {
        *out << separator << ::testing::PrintToString(entry.key()) << ": "
             << ::testing::PrintToString(entry.value());
        separator = ", ";
    }
    *out << " }";
}

/// What is pointed to, since no test is about an address.
template <typename T>
void PrintTo(const QSharedPointer<T>& value, std::ostream* out)
{
    *out << (value.isNull() ? "(null)" : "pointer to ");
    if (!value.isNull()) {
        ::testing::internal::UniversalPrint(*value, out);
    }
}

#endif

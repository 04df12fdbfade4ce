// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDebug>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <ostream>

// How GoogleTest shows Qt's values. Found by argument, so in the global namespace; every file of a
// program includes this header, or the printers would differ between them.

inline void PrintTo(const QString& value, std::ostream* out)
{
    if (value.isNull()) {
        *out << "(null)";
    } else {
        *out << '"' << value.toStdString() << '"';
    }
}

inline void PrintTo(const QByteArray& value, std::ostream* out)
{
    *out << '"' << value.toStdString() << '"';
}

inline void PrintTo(const QUrl& value, std::ostream* out)
{
    *out << value.toString().toStdString();
}

inline void PrintTo(const QDateTime& value, std::ostream* out)
{
    *out << value.toString(Qt::ISODateWithMs).toStdString();
}

inline void PrintTo(const QVariant& value, std::ostream* out)
{
    *out << QDebug::toString(value).toStdString();
}

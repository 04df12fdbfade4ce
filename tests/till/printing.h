// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

// So that a failing test shows texts and not bytes.

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* out)
{
    *out << '[';
    for (const QString& text : texts) {
        *out << "\n  \"" << text.toStdString() << '"';
    }
    *out << ']';
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

#include <cstdio>

namespace till {

/// Writes texts to a stream, in UTF-8 whatever the locale, and hands them on at once.
class Output
{
public:
    explicit Output(std::FILE* target) : stream(target) {}
    virtual ~Output();

    virtual void write(const QString& text);
    void line(const QString& text) { write(text + u'\n'); }
    /// A line "note: …" for each.
    void notes(const QStringList& notices);

private:
    std::FILE* stream;
};

} // namespace till

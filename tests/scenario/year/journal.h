// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QHash>
#include <QIODevice>
#include <QString>
#include <QStringList>

namespace year {

/// What happened, a line an event. Check identifiers differ from run to run, so the journal shows
/// a check by the order in which it was named first: C1, C2 and so on.
class Journal
{
public:
    /// @param file gets every line; null to keep the last ones only
    explicit Journal(QIODevice* file) : out(file) {}

    void write(const QString& line);
    /// The name of a check in the journal.
    QString nameOf(const QString& checkId);
    /// The text with every check identifier in it replaced by its name.
    QString named(QString text);

    int lines() const { return count; }
    /// The last lines, at most 20, oldest first.
    const QStringList& lastLines() const { return last; }
    /// SHA-256 over all lines, in hexadecimal digits.
    QString digest() const { return QString::fromLatin1(hash.result().toHex()); }

private:
    QIODevice* out;
    QHash<QString, int> ordinals;
    QStringList last;
    int count = 0;
    mutable QCryptographicHash hash{QCryptographicHash::Sha256};
};

} // namespace year

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/mend.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace poshost {
struct ConfigKey;
} // namespace poshost

namespace till::doctor {

/// The configuration as it is written, for naming the line of it that has to change. A change is
/// tried on the text first: what the parser would not take, or what is written in a way that a
/// single line does not mend (a table within braces, a text over several lines), is left to a
/// person.
class SettingsFile
{
public:
    /// Reads the file; of one that cannot be read nothing is known. Waits for nobody.
    explicit SettingsFile(const QString& fileName);
    ~SettingsFile();
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    /// The line that gives a key a value, as TOML writes it.
    Mend set(const poshost::ConfigKey& key, const QString& value) const;
    /// Puts quotes around a bare value, which is not shown.
    Mend quote(const poshost::ConfigKey& key) const;
    /// Makes remarks of the lines of a key, or of a whole table. Not printed: nobody knows what
    /// stands in them. @param key empty: the table; @param table empty: outside of all tables
    Mend leaveOut(const QString& table, const QString& key) const;
    /// The same as scripts of sed; nothing where it cannot be done.
    std::optional<QStringList> leavingOut(const QString& table, const QString& key) const;
    /// The script of sed that gives a key, or a table, another name; nothing where it has no line
    /// of its own, or there is such a name already.
    std::optional<QString> renaming(const QString& table, const QString& key,
                                    const QString& name) const;

    /// The bare word behind a key's sign, such as 5; empty for anything else.
    QString bareValue(const poshost::ConfigKey& key) const;
    /// The text that a key holds; empty for anything else.
    QString textValue(const poshost::ConfigKey& key) const;
    /// The file that holds the key's secret, absolute; empty where the configuration holds it.
    QString secretFile(const poshost::ConfigKey& key) const;
    QString name() const { return file; }

    /// A text as TOML writes it.
    static QString quoted(const QString& text);

private:
    struct Content;

    bool wouldParse(const QByteArray& changed) const;
    /// The line of a key that has one of its own, from 1; 0 for none.
    int lineOf(const QString& table, const QString& key) const;
    QString lineAt(int number) const;

    const QString file;
    std::unique_ptr<Content> content;
};

} // namespace till::doctor

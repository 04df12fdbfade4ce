// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/singleton.h"
#include "host/hostexport.h"
#include "host/services/configfinding.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

/// The host's configuration: one TOML file. A key is written "Table:key", so the value of
/// proxy in the table [http] is "http:proxy". Not changed after loading, so safe to read
/// from any thread.
///
/// Which keys are known, and what they may hold, say those who read them: their sheets are
/// registered before a file is loaded (host/config/knownkeys.h, keysheet.h). Of known keys the type
/// is checked; a path that is relative starts at the folder of the configuration file and is handed
/// out absolute; an address is one of http or https without "@". A secret is a text, or
/// { file = "..." }: the only line of that file, so that the configuration can be shown to others.
/// A key that nobody has registered has the value that the file gives it.
class HOST_EXPORT Config
{
public:
    /// An empty configuration: every key yields its default.
    Config() = default;
    virtual ~Config();

    /// Reads a file and replaces what was held.
    /// @param fileName its path; relative paths in it start at its folder
    /// @throws BasicException "configError" naming file, line and key when the file cannot be read,
    /// is not TOML, or a known key has the wrong type or is no address; what was held before stays.
    /// The text never repeats a value.
    void load(const QString& fileName);

    /// Reads what can be read of a file, however wrong the rest is, and replaces what was held: for
    /// finding out all that is wrong at once. Keys with an error are absent. Never throws.
    /// @param fileName its path
    /// @return all errors, and what load would let pass, in the order of tables and keys
    QList<ConfigFinding> examine(const QString& fileName);

    /// The value of a text; never throws.
    /// @param key "Table:key"
    /// @param defaultValue returned when the key is absent or not a text
    /// @return the text as it was written; of a path the absolute one, of a secret the secret
    /// itself
    virtual QString getString(const QString& key, const QString& defaultValue) const;
    /// The value of a whole number; never throws.
    /// @param key "Table:key"
    /// @param defaultValue returned when the key is absent, not a whole number or outside the range
    /// of int
    /// @return the number as it was written, in the unit that the key has
    virtual int getInt(const QString& key, int defaultValue) const;

    /// Whether the key has a value, of whatever type.
    /// @param key "Table:key"
    /// @return false as well for a key that examine found an error in
    bool contains(const QString& key) const;

    /// @return what load noticed and let pass, a sentence each: unknown keys with the nearest known
    /// name, files with a secret in them that others may read; in Russian
    QStringList warnings() const;
    /// @return the same, to be said in the reader's language
    QList<poshost::Message> notices() const { return loadNotices; }
    /// @return the loaded file's path as it was given, empty when none was loaded
    QString fileName() const { return loadedFile; }

private:
    QHash<QString, QVariant> values;
    QList<poshost::Message> loadNotices;
    QString loadedFile;
};

extern template class HOST_EXPORT Singleton<Config>;

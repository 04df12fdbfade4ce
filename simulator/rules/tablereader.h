// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/amount.h"
#include "simulator/rules/configerror.h"

#include <QString>
#include <QStringList>

#include <toml++/toml.h>

namespace simulator {

/// The content of a file of rules. Throws ConfigError when it cannot be read, is no regular file or
/// is larger than rules are.
QByteArray readTomlFile(const QString& path);

/// The table of a text. Throws ConfigError with name, line and reason when it is not TOML, or
/// nested deeper or larger than the parser can bear.
toml::table parseToml(const QByteArray& text, const QString& name);

/// Reads the values of one TOML table and reports what is wrong with file, line and key.
/// Every operation throws ConfigError on a value of the wrong type or outside its range.
/// The table must outlive the reader.
class TableReader
{
public:
    /// file: as it is named in messages; path: the table's own name with a dot behind it, or empty.
    TableReader(const toml::table& table, const QString& file, const QString& path);

    /// Refuses every key that is not among these, naming the nearest of them.
    void allowOnly(const QStringList& keys) const;

    /// A text; fallback when the key is missing. Control characters are refused.
    [[nodiscard]] QString text(const char* key, const QString& fallback = {}) const;

    /// A text that must be there and must not be empty.
    [[nodiscard]] QString requiredText(const char* key) const;

    /// An amount of money, written as a whole number, a decimal number or a text.
    [[nodiscard]] Kopecks kopecks(const char* key, Kopecks fallback) const;

    /// A percentage from 0 to 100 with up to two decimals, in hundredths of a percent.
    [[nodiscard]] int percent(const char* key, int fallback) const;

    /// A text that must be there and must be one of these; names the nearest of them otherwise.
    [[nodiscard]] QString choice(const char* key, const QStringList& known) const;

    /// A whole number within limits.
    [[nodiscard]] qint64 integer(const char* key, qint64 fallback, qint64 least, qint64 most) const;

    /// A number within limits, with any decimals.
    [[nodiscard]] double number(const char* key, double fallback, double least, double most) const;

    /// true or false.
    [[nodiscard]] bool flag(const char* key, bool fallback) const;

    /// A whole number from 0 up that chance follows from.
    [[nodiscard]] quint64 seed(const char* key, quint64 fallback) const;

    /// A table below this one; an empty one when the key is missing.
    [[nodiscard]] TableReader table(const char* key) const;

    /// The tables of an array of tables; none when the key is missing.
    [[nodiscard]] std::vector<TableReader> tables(const char* key) const;

    /// The names of all keys.
    [[nodiscard]] QStringList keys() const;

    /// A complaint about a key of this table, for conditions that only the caller knows.
    [[noreturn]] void refuse(const char* key, const QString& complaint) const;

private:
    [[nodiscard]] QString decimal(const char* key) const;
    [[nodiscard]] ConfigError error(const toml::source_region& where, const QString& key,
                                    const QString& complaint) const;

    const toml::table& values;
    const QString fileName;
    const QString prefix;
};

} // namespace simulator

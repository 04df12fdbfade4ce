// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/amount.h"
#include "simulator/configerror.h"

#include <QString>
#include <QStringList>

#include <toml++/toml.h>

namespace simulator {

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

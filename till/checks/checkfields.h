// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/amount.h"

#include <QString>
#include <QStringList>

#include <toml++/toml.h>

namespace till {

/// The fields of one table of a check file. Every operation throws Failure (Usage) with the file,
/// the line and the field in it. Used by checkfile.cpp only: it shows the TOML library.
class CheckFields
{
public:
    CheckFields(const QString& fileName, const toml::table& content)
        : file(fileName), table(content)
    {}

    QString fileName() const { return file; }
    bool has(const QString& field) const;
    /// Fails on a field that is not in the list.
    void allowOnly(const QStringList& known) const;

    /// A text that is not empty.
    QString text(const QString& field) const;
    /// A text that is not empty, or a whole number.
    QString identifier(const QString& field) const;
    /// A whole number from 1 that fits an int.
    int number(const QString& field) const;
    /// An amount of money in kopecks, not negative.
    qint64 money(const QString& field) const;
    /// A quantity in thousandths, not negative.
    qint64 quantity(const QString& field) const;

    /// Throws: "<file>, line <n>, <field>: <what>."
    [[noreturn]] void fail(const QString& field, const QString& what) const;

private:
    const toml::node* find(const QString& field) const;
    const toml::node& require(const QString& field) const;
    QString decimalText(const QString& field) const;
    qint64 decimal(const QString& field, int decimals, qint64 maximum) const;

    QString file;
    const toml::table& table;
};

} // namespace till

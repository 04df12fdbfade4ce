// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/basicexception.h"

#include <QString>

namespace poshost {

/// What a Database throws when the system or SQLite refuses something: the "databaseError" for the
/// cashier, with its parts for a program that says it in words of its own.
class HOST_EXPORT DatabaseFailure : public BasicException
{
public:
    /// @param message for the cashier
    /// @param file the database's absolute path
    /// @param cause what the system or SQLite says, in its own words
    DatabaseFailure(const tr::Tr& message, const QString& file, const QString& cause);
    DatabaseFailure(const DatabaseFailure&) = default;
    DatabaseFailure& operator=(const DatabaseFailure&) = default;
    ~DatabaseFailure() override;

    /// @return the database's absolute path
    QString file() const { return path; }
    /// @return what the system or SQLite says, in its own words
    QString cause() const { return words; }

private:
    QString path;
    QString words;
};

} // namespace poshost

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <memory>

struct pg_result;

namespace orvastore {

/// The rows of a command.
class Result
{
public:
    explicit Result(pg_result* owned);

    int rows() const;
    bool isNull(int row, int column) const;
    QString text(int row, int column) const;
    qint64 number(int row, int column) const;
    bool isTrue(int row, int column) const;
    /// Of a bytea.
    QByteArray bytes(int row, int column) const;
    /// Of milliseconds since 1970; invalid for null.
    QDateTime time(int row, int column) const;

    const pg_result* raw() const { return held.get(); }

private:
    struct Clearing
    {
        void operator()(pg_result* result) const;
    };
    std::unique_ptr<pg_result, Clearing> held;
};

} // namespace orvastore

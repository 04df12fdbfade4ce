// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <functional>
#include <optional>

namespace simulator {

/// A request to the address for administration, as its route takes it.
struct AdminCall
{
    const Request& request;
    QString part; ///< what stands in the place of "{...}" in the route's path; otherwise empty

    /// The value of a key of the query, decoded; empty where there is none.
    [[nodiscard]] QString argument(const QString& key) const;

    /// The same as a whole number from 0 up. Throws Rejection with 400 where it is none.
    [[nodiscard]] qint64 number(const QString& key, qint64 otherwise) const;
};

/// A method and a path, as "GET" and "/exchanges/{number}", and what answers them. The answer may
/// throw Rejection, ConfigError, or anything else for 500.
struct AdminRoute
{
    QByteArray method;
    QByteArray path; ///< one segment at most stands in braces
    std::function<Answer(const AdminCall&)> answer;

    /// What stands in the place of the braces, empty without any; nothing where the route is not
    /// the request's.
    [[nodiscard]] std::optional<QString> match(const Request& request) const;
};

/// An answer in JSON.
Answer jsonAnswer(const QByteArray& text);

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

namespace till {

/// How many points the customer wants to pay with. The values are kept in the database.
struct PointsChoice
{
    enum class Kind : qint32
    {
        None = 0,
        /// A sum, as far as it can be spent.
        Sum = 1,
        /// As many as can be spent.
        All = 2,
    };

    Kind kind = Kind::None;
    /// Of a Sum.
    qint64 kopecks = 0;

    static PointsChoice all() { return {Kind::All, 0}; }
    static PointsChoice sum(qint64 kopecks) { return {Kind::Sum, kopecks}; }

    friend bool operator==(const PointsChoice&, const PointsChoice&) = default;
};

} // namespace till

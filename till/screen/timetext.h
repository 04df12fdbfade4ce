// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QString>

/// How people are shown a time, in every language the same.
namespace till::timetext {

inline QString toTheSecond(const QDateTime& time)
{
    return time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

inline QString toTheMinute(const QDateTime& time)
{
    return time.toString(QStringLiteral("yyyy-MM-dd hh:mm"));
}

} // namespace till::timetext

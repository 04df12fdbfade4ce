// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/casereport/reportpage_p.h"

#include <QList>

namespace till {

/// What took how long, in the order in which it happened.
struct Duration
{
    QString what;
    double milliseconds = 0;
    bool isExchange = false; ///< part of the call before it
};

/// A bar for each, all to one scale, as SVG; the same as words for who cannot see it.
void writeDurationChart(ReportPage& page, const QString& title, const QList<Duration>& durations);

} // namespace till

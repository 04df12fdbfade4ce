// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/currenttime.h"
#include "tests/support/mocked.h"

#include <QDateTime>

namespace year {

/// The clock of all tills: time goes on as the story says, and the clock may be set wrong.
class YearClock : public CurrentTime
{
public:
    explicit YearClock(const QDateTime& start) : truth(start), registration(*this) {}

    QDateTime currentDateTime() override { return truth.addSecs(wrongBy); }

    void advance(qint64 milliseconds) { truth = truth.addMSecs(milliseconds); }
    /// Lets time go on up to a moment, or not at all when that is past.
    void advanceTo(const QDateTime& moment) { truth = std::max(truth, moment); }
    /// What it would be if nobody had touched the clock.
    QDateTime trueTime() const { return truth; }
    void setWrongBy(qint64 seconds) { wrongBy = seconds; }

private:
    QDateTime truth;
    qint64 wrongBy = 0;
    tests::Registered<CurrentTime> registration;
};

} // namespace year

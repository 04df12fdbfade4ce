// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/currenttime.h"

#include <QTimeZone>

/// The process's clock while it lives; goes only when it is told to.
class StoppedClock : public CurrentTime
{
public:
    StoppedClock() { MockFactory<CurrentTime>::mocked = this; }
    ~StoppedClock() override { MockFactory<CurrentTime>::mocked = nullptr; }

    QDateTime currentDateTime() override { return time; }
    QDateTime now() const { return time; }

    void advance(qint64 milliseconds) { time = time.addMSecs(milliseconds); }
    void advanceTo(const QDateTime& moment) { time = moment; }

private:
    QDateTime time{QDate(2026, 3, 2), QTime(12, 0), QTimeZone::utc()};
};

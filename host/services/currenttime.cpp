// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/currenttime.h"

template class MockFactory<CurrentTime>;

CurrentTime::CurrentTime() = default;

CurrentTime::~CurrentTime() = default;

QDateTime CurrentTime::currentDateTime()
{
    // Thousands of awards read the clock within milliseconds, and each local time costs a look at
    // the time zone's file.
    thread_local qint64 lastMilliseconds = -1;
    thread_local QDateTime last;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now != lastMilliseconds) {
        last = QDateTime::fromMSecsSinceEpoch(now);
        lastMilliseconds = now;
    }
    return last;
}

qint64 CurrentTime::milliseconds()
{
    CurrentTime* const mocked = MockFactory<CurrentTime>::mocked;
    return mocked == nullptr ? QDateTime::currentMSecsSinceEpoch()
                             : mocked->currentDateTime().toMSecsSinceEpoch();
}

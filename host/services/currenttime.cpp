// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/currenttime.h"

template class MockFactory<CurrentTime>;

CurrentTime::CurrentTime() = default;

CurrentTime::~CurrentTime() = default;

QDateTime CurrentTime::currentDateTime()
{
    return QDateTime::currentDateTime();
}

qint64 CurrentTime::milliseconds()
{
    CurrentTime* const mocked = MockFactory<CurrentTime>::mocked;
    return mocked == nullptr ? QDateTime::currentMSecsSinceEpoch()
                             : mocked->currentDateTime().toMSecsSinceEpoch();
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordingclock.h"

#include "till/recording/recorder.h"

namespace till {

RecordingClock::RecordingClock(Recorder& journal)
    : recorder(journal), before(MockFactory<CurrentTime>::mocked)
{
    MockFactory<CurrentTime>::mocked = this;
}

RecordingClock::~RecordingClock()
{
    MockFactory<CurrentTime>::mocked = before;
}

QDateTime RecordingClock::currentDateTime()
{
    const QDateTime time =
        before != nullptr ? before->currentDateTime() : CurrentTime::currentDateTime();
    recorder.noteReading(time);
    return time;
}

} // namespace till

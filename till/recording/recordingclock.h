// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/currenttime.h"

namespace till {

class Recorder;

/// Stands before the clock while it lives and writes down what the plug-in reads from it.
class RecordingClock : public CurrentTime
{
public:
    explicit RecordingClock(Recorder& journal);
    ~RecordingClock() override;

    QDateTime currentDateTime() override;

private:
    Recorder& recorder;
    CurrentTime* const before;
};

} // namespace till

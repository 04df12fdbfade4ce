// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/recorder.h"
#include "till/recording/recordingbroker.h"
#include "till/recording/recordingclock.h"
#include "till/recording/recordingconfig.h"
#include "till/recording/recordingloyalty.h"
#include "till/recording/recordingtransport.h"

#include <memory>

namespace till {

/// Everything that records, in its place as long as this lives: configuration, HTTP client, clock
/// and queue at once, the loyalty system when it is there. To be made on the host thread before the
/// plug-in is loaded and before any other thread asks for a service, and to end after them.
class Recording
{
public:
    /// @param target must live longer
    /// @param plugin the plug-in's file, of which the name is kept
    /// @param session what the session is about
    Recording(RecordTarget& target, const QString& plugin, const QString& session);
    ~Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /// What tells one build of a plug-in from another: a digest of its file; empty when it cannot
    /// be read.
    static QString buildOf(const QString& plugin);

    /// What the host is to call instead of that system, which must live longer.
    BasicLoyaltySystem& before(BasicLoyaltySystem& system);

private:
    Recorder recorder;
    RecordingConfig config;
    RecordingTransport transport;
    RecordingClock clock;
    RecordingBroker broker;
    std::unique_ptr<RecordingLoyalty> loyalty;
};

} // namespace till

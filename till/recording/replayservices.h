// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"
#include "host/services/currenttime.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/restclient.h"
#include "host/services/session.h"
#include "till/recording/record.h"
#include "till/recording/replayfeed.h"

namespace till {

/// The host's services while a record is replayed: they answer what they answered then, and reach
/// neither network nor disk. In place as long as this lives; those before come back afterwards.
class ReplayServices
{
public:
    explicit ReplayServices(const Record& record);
    ~ReplayServices();
    ReplayServices(const ReplayServices&) = delete;
    ReplayServices& operator=(const ReplayServices&) = delete;

    ReplayFeed feed;
    Session session;

private:
    class RecordedConfig;
    class RecordedTransport;
    class RecordedClock;
    class RecordedBroker;

    std::unique_ptr<RecordedConfig> config;
    std::unique_ptr<RecordedTransport> transport;
    std::unique_ptr<RecordedClock> clock;
    std::unique_ptr<RecordedBroker> broker;
    Config* const configBefore;
    Session* const sessionBefore;
    DBQueueBroker* const brokerBefore;
    RestClient* const transportBefore;
    CurrentTime* const clockBefore;
};

} // namespace till

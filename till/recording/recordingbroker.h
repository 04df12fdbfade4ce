// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/dbqueuebroker.h"

namespace till {

class Recorder;

/// Stands before the outgoing queue while it lives and writes down what the plug-in puts into it,
/// without the credentials.
class RecordingBroker : public DBQueueBroker
{
public:
    explicit RecordingBroker(Recorder& journal);
    ~RecordingBroker() override;

    bool addToQueue(const QString& queueName, const QVariantMap& message,
                    const QString& extra) override;

private:
    Recorder& recorder;
    DBQueueBroker* const before;
};

} // namespace till

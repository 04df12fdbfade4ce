// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "bench/baredatabase.h"
#include "bench/checkdata.h"
#include "bench/openorva.h"
#include "bench/workplace.h"
#include "host/services/dbqueuebroker.h"

#include <QDomDocument>

namespace bench {

/// A sale with two impacts a line that is closed again and again, and the floor of that.
class ClosingScene
{
public:
    explicit ClosingScene(int lines);
    ~ClosingScene();
    ClosingScene(const ClosingScene&) = delete;
    ClosingScene& operator=(const ClosingScene&) = delete;

    /// Gives the plug-in the server's answer anew: a commit writes into it.
    void prepare();
    /// The subject: the plug-in's commit, with its durable message.
    void close();
    /// The floor: the text of what was queued last, and one durable row with it.
    void insert();

private:
    Workplace workplace;
    DBQueueBroker broker;
    BareDatabase bare;
    QSharedPointer<Document> sale;
    QDomDocument answer;
    QDomDocument confirmation;
    OpenOrva orva;
};

} // namespace bench

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/requestsending.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QUrl>

namespace poshost {

/// One request to be sent for a queued message.
struct DeliveryTask
{
    qint64 messageId = 0;
    qint64 accountId = 0;
    QString queue;
    qint64 lane = 0; ///< of its lane only one request is under way
    int step = 0;    ///< index of the address, from 0
    int serverErrors = 0;
    bool attemptedBefore = false; ///< this step may have reached the server earlier
    bool isHeld = false;          ///< its queue or its authorization was held back; this is a probe
    QList<QUrl> addresses;        ///< of all steps
    QByteArray payload;
    QHash<QString, QString> headers;
    Message damage;        ///< why it cannot be sent, for people; empty when it can
    QString authorization; ///< as it also stands among the headers; empty for none

    bool isLastStep() const { return step + 1 >= addresses.size(); }
};

} // namespace poshost

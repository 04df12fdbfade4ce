// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/dbqueuebroker.h"

#include <QList>

namespace tests {

/// The host's broker, which cannot store the first message that it is given.
class FailingBroker : public DBQueueBroker
{
public:
    using DBQueueBroker::DBQueueBroker;

    bool addToQueue(const QString& queueName, const QVariantMap& message,
                    const QString& extra) override
    {
        tried.append(message);
        if (tried.size() == 1) {
            throw BasicException(
                tr::Tr(QStringLiteral("queueError"), QStringLiteral("Диск переполнен")));
        }
        return DBQueueBroker::addToQueue(queueName, message, extra);
    }

    QList<QVariantMap> tried; ///< all that it was given
};

} // namespace tests

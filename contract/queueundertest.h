// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/dbqueuebroker.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

namespace contract {

/// A message as the host's delivery finds it.
struct StoredMessage
{
    QString queue;
    QString payload;
    /// All headers, the authorization too.
    QMap<QString, QString> headers;
    /// In the order in which they are posted to.
    QStringList addresses;
    QString extra;
};

/// The host's outgoing queue, empty at first, which nobody delivers while the suite looks at it.
class QueueUnderTest
{
public:
    QueueUnderTest() = default;
    QueueUnderTest(const QueueUnderTest&) = delete;
    QueueUnderTest& operator=(const QueueUnderTest&) = delete;
    virtual ~QueueUnderTest();

    virtual DBQueueBroker& broker() = 0;
    /// What a process started at this moment would have to deliver, in the order of storing.
    virtual QList<StoredMessage> stored() = 0;
    /// Runs the work as a part of what the host commits at once with closing a check.
    virtual void inTransaction(const std::function<void()>& work) = 0;
    /// The same, but the host gives up instead of committing.
    virtual void inAbandonedTransaction(const std::function<void()>& work) = 0;
    /// From now on nothing can be stored: the disk is full or may not be written to.
    virtual void breakStorage() = 0;
};

} // namespace contract

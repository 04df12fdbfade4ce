// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/document.h"
#include "host/loyalty/basicloyaltysystem.h"
#include "host/services/config.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/session.h"
#include "tests/support/mocked.h"

#include <QPointer>
#include <QStringList>
#include <QTemporaryDir>

namespace tests {

/// A queue that takes everything.
class TakingQueue : public DBQueueBroker
{
public:
    bool addToQueue(const QString&, const QVariantMap&, const QString&) override
    {
        ++taken;
        return true;
    }

    int taken = 0;
};

/// A host with the watching loyalty system loaded, which can be told step by step what to do, right
/// or wrong. What was found is read from the file that the system writes.
class WatchedHost
{
public:
    WatchedHost();
    ~WatchedHost();
    WatchedHost(const WatchedHost&) = delete;
    WatchedHost& operator=(const WatchedHost&) = delete;

    /// A sale with two lines and a card record, known to nobody yet.
    static QSharedPointer<Document> sale(const QString& id = QStringLiteral("sale"));
    static QSharedPointer<Document> returnOf(const QString& saleId);

    BasicLoyaltySystem& system() const;
    void init() const { system().init(); }
    /// Makes the document the session's and the system's.
    void takeUp(const QSharedPointer<Document>& document);
    void layDown();
    /// deinit, and the object deleted.
    void takeDown();
    /// The object deleted without anything else.
    void drop() { delete object.data(); }

    /// The names of the rules that were found broken, in order, each with its call.
    QStringList findings() const;
    /// Everything that was written.
    QString written() const;

    Session session;
    Config config;
    TakingQueue queue;

private:
    QTemporaryDir folder;
    InSingleton<Session> sessionInPlace{&session};
    InSingleton<Config> configInPlace{&config};
    InSingleton<DBQueueBroker> queueInPlace{&queue};
    QPointer<QObject> object;
};

} // namespace tests

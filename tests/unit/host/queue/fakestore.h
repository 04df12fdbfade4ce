// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/storemodule_p.h"
#include "store/sharedbooks.h"

#include <QHash>
#include <QStringList>
#include <functional>

/// A store that keeps what it is given, and ends each hand-over as it is told.
class FakeStore : public orvastore::StoreClient
{
public:
    using End = orvastore::StoreEnd;

    void open(const orvastore::StoreSettings& given) override { settings = given; }

    orvastore::StoreResult reach() override
    {
        ++reached;
        return result(isThere ? End::Done : End::Unreachable);
    }

    QList<orvastore::StoreResult> handOver(const QList<orvastore::HandedCheck>& checks) override
    {
        if (beforeKeeping) {
            beforeKeeping(checks);
        }
        QList<orvastore::StoreResult> results;
        bool broken = false;
        for (const orvastore::HandedCheck& check : checks) {
            tried.append(check.identifier);
            const End end = broken ? End::Unreachable : ends.value(check.identifier, usually);
            if (end == End::Done || (end == End::Unknown && keepsUnknown)) {
                kept.insert(check.identifier, check);
                order.append(check.identifier);
            }
            broken = broken || end == End::Unknown || end == End::Unreachable;
            results.append(result(end));
        }
        return results;
    }

    void interrupt() override { ++interrupted; }

    static orvastore::StoreResult result(End end)
    {
        return {end, end == End::Done ? poshost::Message()
                                      : poshost::Message::plain(QStringLiteral("so it is"))};
    }

    bool isThere = true;
    bool keepsUnknown = true; ///< whether what ends as Unknown is in the books
    End usually = End::Done;
    QHash<QString, End> ends; ///< of single checks
    std::function<void(const QList<orvastore::HandedCheck>&)> beforeKeeping;

    orvastore::StoreSettings settings;
    QHash<QString, orvastore::HandedCheck> kept;
    QStringList tried; ///< identifiers, each time anew
    QStringList order; ///< as they were kept, each time anew
    int reached = 0;
    int interrupted = 0;
};

/// Hands out the fake store as if its module had been loaded, while it lives.
class FakeModule : public poshost::StoreModule, public orvastore::StoreDriver
{
public:
    explicit FakeModule(FakeStore& fake) : store(fake)
    {
        MockFactory<poshost::StoreModule>::mocked = this;
    }
    ~FakeModule() override { MockFactory<poshost::StoreModule>::mocked = nullptr; }
    FakeModule(const FakeModule&) = delete;
    FakeModule& operator=(const FakeModule&) = delete;

    QSharedPointer<orvastore::StoreDriver> load(const QString&, poshost::Message&) override
    {
        return {this, [](orvastore::StoreDriver*) {}};
    }
    QSharedPointer<orvastore::StoreClient> makeClient() override
    {
        return {&store, [](orvastore::StoreClient*) {}};
    }
    QSharedPointer<orvastore::SharedBooks> makeBooks() override { return {}; }

private:
    FakeStore& store;
};

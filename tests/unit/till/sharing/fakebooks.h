// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/storemodule_p.h"
#include "store/sharedbooks.h"

#include <QMap>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace tests {

/// Suspended checks and closed ones as a store keeps them, in memory. What goes wrong with the next
/// calls is set from outside.
class FakeBooks : public orvastore::SharedBooks
{
public:
    enum class Fault
    {
        None,
        Away,        ///< nothing arrives, and that is certain
        LostRequest, ///< nothing arrives, and nobody knows
        LostReply,   ///< it is done, and nobody is told
    };
    struct Row
    {
        orvastore::LeftCheck check;
        QStringList marks;
        QString takenBy;
        QString token;
        bool isSettled = false;
    };

    void open(const orvastore::StoreSettings&) override {}
    void interrupt() override {}

    orvastore::SaleToReturn saleToReturn(const QString&, const QString&) override { return {}; }
    orvastore::StoreResult reserve(const orvastore::Reservation&) override { return {}; }
    orvastore::StoreResult release(const QString&, const QString&) override { return {}; }
    orvastore::StoreResult settleReturn(const QString&, const QString&) override { return {}; }
    orvastore::StoreResult keep(const orvastore::HandedCheck&) override { return {}; }

    orvastore::StoreResult leave(const orvastore::LeftCheck& check) override
    {
        return doing(u"leave", [&] { return keep(check); });
    }
    orvastore::TakeUp takeUp(const QString&, const QString& which, const QString& till,
                             const QString& token) override
    {
        orvastore::TakeUp taken;
        taken.result = doing(u"takeUp", [&] {
            Row* const row = found(which, token);
            if (row == nullptr || (!row->takenBy.isEmpty() && row->token != token)) {
                taken.isOver = true;
                return refused(row == nullptr ? QStringLiteral("none")
                                              : QStringLiteral("at till ") + row->takenBy);
            }
            row->takenBy = till;
            row->token = token;
            taken.check = row->check;
            return orvastore::StoreResult{orvastore::StoreEnd::Done, {}};
        });
        if (taken.result.end != orvastore::StoreEnd::Done) {
            taken.check.reset();
        }
        taken.isOver = taken.isOver && taken.result.end == orvastore::StoreEnd::Refused;
        return taken;
    }
    orvastore::StoreResult settleTakeUp(const QString&, const QString& token) override
    {
        return doing(u"settle", [&] {
            for (Row& row : rows) {
                if (row.token == token) {
                    row.isSettled = true;
                    row.check.content.clear();
                    return orvastore::StoreResult{orvastore::StoreEnd::Done, {}};
                }
            }
            return orvastore::StoreResult{orvastore::StoreEnd::Refused,
                                          poshost::Message::of("store.suspendedReleased")};
        });
    }
    orvastore::StoreResult
    forEachLeft(const QString&,
                const std::function<void(const orvastore::LeftCheck&)>& take) override
    {
        return doing(u"forEachLeft", [&] {
            for (const Row& row : std::as_const(rows)) {
                if (row.takenBy.isEmpty()) {
                    take(row.check);
                }
            }
            return orvastore::StoreResult{orvastore::StoreEnd::Done, {}};
        });
    }
    orvastore::StoreResult
    forEachCheck(const QString&, const QString& before,
                 const std::function<bool(const orvastore::KeptCheck&)>& take) override
    {
        return doing(u"forEachCheck", [&] {
            bool isBehind = before.isEmpty();
            for (const orvastore::KeptCheck& check : std::as_const(closed)) {
                if (isBehind && !take(check)) {
                    break;
                }
                isBehind = isBehind || check.identifier == before;
            }
            return isBehind ? orvastore::StoreResult{orvastore::StoreEnd::Done, {}}
                            : refused(QStringLiteral("no such check"));
        });
    }
    orvastore::StoreResult findChecks(const QString&, const QString& which,
                                      QList<orvastore::KeptCheck>& all) override
    {
        return doing(u"findChecks", [&] {
            for (const orvastore::KeptCheck& check : std::as_const(closed)) {
                if (check.identifier == which || QString::number(check.number) == which) {
                    all.append(check);
                }
            }
            return orvastore::StoreResult{orvastore::StoreEnd::Done, {}};
        });
    }
    orvastore::StoreResult rewrite(const QString&, const QString& identifier,
                                   const QByteArray& content) override
    {
        return doing(u"rewrite", [&] {
            for (orvastore::KeptCheck& check : closed) {
                if (check.identifier == identifier && check.isDelivered) {
                    check.content = content;
                    return orvastore::StoreResult{orvastore::StoreEnd::Done, {}};
                }
            }
            return refused(QStringLiteral("not delivered"));
        });
    }

    /// How many wait for a till.
    int waiting() const
    {
        return int(std::count_if(rows.cbegin(), rows.cend(),
                                 [](const Row& row) { return row.takenBy.isEmpty(); }));
    }

    QMap<QString, Row> rows;
    QList<orvastore::KeptCheck> closed; ///< the newest first
    Fault fault = Fault::None;
    QString faultAt; ///< the call that it befalls; empty: each
    QStringList calls;

private:
    static orvastore::StoreResult refused(const QString& why)
    {
        return {orvastore::StoreEnd::Refused, poshost::Message::plain(why)};
    }

    template <typename Work>
    orvastore::StoreResult doing(QStringView call, const Work& work)
    {
        calls.append(call.toString());
        const Fault now = faultAt.isEmpty() || faultAt == call ? fault : Fault::None;
        const poshost::Message why = poshost::Message::plain(QStringLiteral("so it is"));
        switch (now) {
        case Fault::Away:
            return {orvastore::StoreEnd::Unreachable, why};
        case Fault::LostRequest:
            return {orvastore::StoreEnd::Unknown, why};
        case Fault::LostReply:
            work();
            return {orvastore::StoreEnd::Unknown, why};
        case Fault::None:
            break;
        }
        return work();
    }

    orvastore::StoreResult keep(const orvastore::LeftCheck& check)
    {
        Row& row = rows[check.identifier];
        if (!row.marks.contains(check.mark)) {
            const QString holder = row.takenBy.isEmpty() ? row.check.till : row.takenBy;
            if (!row.marks.isEmpty() && holder != check.till) {
                return refused(QStringLiteral("at till ") + holder);
            }
            row = Row{check, row.marks + QStringList{check.mark}, {}, {}, false};
        }
        return {orvastore::StoreEnd::Done, {}};
    }

    Row* found(const QString& which, const QString& token)
    {
        Row* waits = nullptr;
        for (Row& row : rows) {
            if (row.token == token) {
                return &row;
            }
            const bool isMeant = which == QStringLiteral("last") ? row.takenBy.isEmpty()
                                                                 : row.check.identifier == which;
            waits = isMeant ? &row : waits;
        }
        return waits;
    }
};

/// Hands the books out as if their module had been loaded, while it lives.
class FakeBooksModule : public poshost::StoreModule, public orvastore::StoreDriver
{
public:
    explicit FakeBooksModule(FakeBooks& fake) : books(fake)
    {
        MockFactory<poshost::StoreModule>::mocked = this;
    }
    ~FakeBooksModule() override { MockFactory<poshost::StoreModule>::mocked = nullptr; }
    FakeBooksModule(const FakeBooksModule&) = delete;
    FakeBooksModule& operator=(const FakeBooksModule&) = delete;

    QSharedPointer<orvastore::StoreDriver> load(const QString&, poshost::Message&) override
    {
        return {this, [](orvastore::StoreDriver*) {}};
    }
    QSharedPointer<orvastore::StoreClient> makeClient() override { return {}; }
    QSharedPointer<orvastore::SharedBooks> makeBooks() override
    {
        return {&books, [](orvastore::SharedBooks*) {}};
    }

private:
    FakeBooks& books;
};

} // namespace tests

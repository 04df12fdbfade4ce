// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "deliveryfixture.h"
#include "fakestore.h"
#include "host/queue/closedcheck.h"

namespace {

using End = orvastore::StoreEnd;

/// A check for each message that was queued with an identifier as what is extra.
std::optional<poshost::ClosedCheck> checkNamedByExtra(poshost::Database& database, qint64 message)
{
    poshost::Statement row(database, u"SELECT extra FROM queue_messages WHERE id = ?"_s);
    if (!row.bind(message).next() || row.value(0).toString().isEmpty()) {
        return std::nullopt;
    }
    poshost::ClosedCheck check;
    check.identifier = row.value(0).toString();
    check.till = u"3"_s;
    check.number = message;
    check.content = "content of " + check.identifier.toUtf8();
    return check;
}

/// A queue whose checks go to a store.
class HandingOver : public Delivery
{
protected:
    HandingOver() { poshost::registerClosedChecks(checkNamedByExtra); }
    ~HandingOver() override { poshost::registerClosedChecks(nullptr); }

    /// Queues the message of a check, both of one name.
    qint64 close(const QString& name, const QString& authorization = u"Basic one"_s)
    {
        broker.addToQueue(u"orva"_s, queuedMessage(name, authorization), name);
        const qint64 id = queue.lastAddedId();
        queue.putIntoLane(id, u"card "_s + name);
        return id;
    }

    std::string deliverAfter(qint64 milliseconds)
    {
        clock.advance(milliseconds);
        return deliver();
    }

    bool isBegun(qint64 id) { return entry(id).isHandedOver; }
    bool isHanded(qint64 id) { return stateOf(id) == done && entry(id).isHandedOver; }

    FakeStore store;
    FakeModule module{store};
    std::unique_ptr<Configured> configured =
        std::make_unique<Configured>("[store]\ndatabase = \"dbname=orva\"\nshop = \"1042\"\n");

    void fallBackAfter(int seconds)
    {
        configured.reset();
        configured = std::make_unique<Configured>(
            "[store]\ndatabase = \"dbname=orva\"\nfallback = \"deliver\"\nfallbackAfter = " +
            QByteArray::number(seconds) + "\n");
    }
    void takeStoreAway()
    {
        configured.reset();
        configured = std::make_unique<Configured>("[queue]\n");
    }
};

TEST_F(HandingOver, TakesThePlaceOfSending)
{
    const qint64 first = close(u"a"_s);
    const qint64 second = close(u"b"_s);
    EXPECT_EQ(deliver(), "");
    EXPECT_EQ(lastReport.handedOver, 2);
    EXPECT_EQ(lastReport.delivered, 0);
    EXPECT_EQ(store.order, QStringList({u"a"_s, u"b"_s}));
    EXPECT_TRUE(isHanded(first));
    EXPECT_TRUE(isHanded(second));
    EXPECT_TRUE(queue.list().isEmpty());
    EXPECT_EQ(store.settings.database, u"dbname=orva"_s);
}

TEST_F(HandingOver, GivesAwayTheCheckAndItsWholeMessage)
{
    close(u"a"_s);
    deliver();
    ASSERT_TRUE(store.kept.contains(u"a"_s));
    const orvastore::HandedCheck check = store.kept.value(u"a"_s);
    EXPECT_EQ(check.shop, u"1042"_s);
    EXPECT_EQ(check.till, u"3"_s);
    EXPECT_EQ(check.content, "content of a");
    ASSERT_EQ(check.messages.size(), 1);
    EXPECT_EQ(check.messages.first().payload, "a");
    EXPECT_EQ(check.messages.first().authorization, u"Basic one"_s);
    EXPECT_TRUE(check.messages.first().urls.contains("http://server.test/step2"));
    EXPECT_FALSE(check.messages.first().headers.contains("Basic"));
}

TEST_F(HandingOver, SharesALaneAmongThoseOfOneCardOnly)
{
    const qint64 first = close(u"a"_s);
    const qint64 second = close(u"b"_s);
    close(u"c"_s);
    queue.putIntoLane(second, u"card a"_s);
    static_cast<void>(first);
    deliver();
    EXPECT_EQ(store.kept.value(u"a"_s).laneName, store.kept.value(u"b"_s).laneName);
    EXPECT_NE(store.kept.value(u"a"_s).laneName, store.kept.value(u"c"_s).laneName);
    EXPECT_FALSE(store.kept.value(u"a"_s).laneName.contains(u"card"_s));
}

TEST_F(HandingOver, IsNotedBeforeAnythingIsSent)
{
    const qint64 id = close(u"a"_s);
    int looks = 0;
    store.beforeKeeping = [&](const QList<orvastore::HandedCheck>&) {
        poshost::Database other(database->fileName());
        poshost::Statement row(other, u"SELECT handover FROM queue_messages WHERE id = ?"_s);
        ASSERT_TRUE(row.bind(id).next());
        EXPECT_GT(row.value(0).toLongLong(), 0);
        ++looks;
    };
    deliver();
    EXPECT_EQ(looks, 1);
}

TEST_F(HandingOver, IsRepeatedUntilTheStoreSaysThatItHasTheCheck)
{
    fallBackAfter(1);
    const qint64 id = close(u"a"_s);
    store.usually = End::Unknown;
    EXPECT_EQ(deliver(), "");
    EXPECT_EQ(deliverAfter(hour), "");
    EXPECT_EQ(stateOf(id), waits);
    EXPECT_EQ(entry(id).obstacle.code(), u"store.begun"_s);
    store.usually = End::Done;
    EXPECT_EQ(deliverAfter(hour), "");
    EXPECT_TRUE(isHanded(id));
    EXPECT_EQ(store.tried, QStringList({u"a"_s, u"a"_s, u"a"_s}));
}

TEST_F(HandingOver, KeepsAMessageFromTheTillsDeliveryEvenWhenTheStoreIsGoneForGood)
{
    const qint64 id = close(u"a"_s);
    const qint64 never = close(u"b"_s);
    store.usually = End::Unknown;
    deliver();
    takeStoreAway();
    EXPECT_EQ(deliverAfter(hour), "b1 b2");
    EXPECT_TRUE(isBegun(id));
    EXPECT_EQ(stateOf(id), waits);
    EXPECT_EQ(stateOf(never), done);
    EXPECT_TRUE(queue.park(id));
    EXPECT_TRUE(queue.retry(id));
    EXPECT_EQ(deliverAfter(hour), "");
}

TEST_F(HandingOver, ThatMayHaveSucceededStaysSoWhenTheStoreIsNotReachedLater)
{
    fallBackAfter(1);
    const qint64 id = close(u"a"_s);
    store.usually = End::Unknown;
    deliver();
    store.usually = End::Unreachable;
    EXPECT_EQ(deliverAfter(hour), "");
    store.usually = End::Refused;
    EXPECT_EQ(deliverAfter(hour), "");
    EXPECT_EQ(deliverAfter(hour), "");
    EXPECT_TRUE(isBegun(id));
    EXPECT_EQ(store.tried.size(), 4);
}

TEST_F(HandingOver, ThatAStoppedProgramHadBegunIsRepeated)
{
    const qint64 id = close(u"a"_s);
    database->execute(u"UPDATE queue_messages SET handover = 1"_s);
    fallBackAfter(1);
    store.isThere = false;
    EXPECT_EQ(deliverAfter(hour), "");
    store.isThere = true;
    EXPECT_EQ(deliverAfter(hour), "");
    EXPECT_TRUE(isHanded(id));
}

TEST_F(HandingOver, BeginsNothingForAStoreThatIsAway)
{
    const qint64 id = close(u"a"_s);
    store.isThere = false;
    EXPECT_EQ(deliver(), "");
    EXPECT_FALSE(isBegun(id));
    EXPECT_EQ(stateOf(id), waits);
    EXPECT_TRUE(store.tried.isEmpty());
}

TEST_F(HandingOver, WaitsLongerAfterEachFailureAndNeverLong)
{
    close(u"a"_s);
    store.isThere = false;
    deliver();
    EXPECT_GE(waitInMilliseconds(), second);
    EXPECT_LE(waitInMilliseconds(), 2 * second);
    deliver();
    EXPECT_EQ(store.reached, 1);
    deliverThrough(20);
    EXPECT_EQ(store.reached, 21);
    EXPECT_LE(waitInMilliseconds(), 15 * second);
    EXPECT_GE(waitInMilliseconds(), 10 * second);
    store.isThere = true;
    deliverThrough(1);
    EXPECT_EQ(lastReport.handedOver, 1);
}

TEST_F(HandingOver, FallsBackToTheTillAfterTheTimeOnly)
{
    fallBackAfter(60);
    const qint64 id = close(u"a"_s);
    store.isThere = false;
    EXPECT_EQ(deliver(), "");
    EXPECT_EQ(deliverAfter(50 * second), "");
    EXPECT_EQ(deliverAfter(10 * second), "a1 a2");
    EXPECT_EQ(stateOf(id), done);
    EXPECT_FALSE(entry(id).isHandedOver);
}

TEST_F(HandingOver, WaitsForTheStoreWithoutAFallback)
{
    const qint64 id = close(u"a"_s);
    store.isThere = false;
    EXPECT_EQ(deliver(), "");
    EXPECT_EQ(deliverAfter(hour), "");
    EXPECT_EQ(stateOf(id), waits);
}

TEST_F(HandingOver, ThatTheStoreHasCertainlyNotGotFallsBack)
{
    fallBackAfter(1);
    close(u"a"_s);
    store.usually = End::Unreachable;
    EXPECT_EQ(deliver(), "");
    EXPECT_EQ(deliverAfter(hour), "a1 a2");
    close(u"b"_s);
    store.usually = End::Refused;
    EXPECT_EQ(deliver(), "");
    EXPECT_EQ(deliverAfter(minute), "b1 b2");
}

TEST_F(HandingOver, GoesOnBehindACheckThatTheStoreRefuses)
{
    const qint64 refused = close(u"a"_s);
    const qint64 other = close(u"b"_s);
    store.ends.insert(u"a"_s, End::Refused);
    EXPECT_EQ(deliver(), "");
    EXPECT_TRUE(isHanded(other));
    EXPECT_FALSE(isBegun(refused));
    EXPECT_EQ(entry(refused).lastError, u"so it is"_s);
    deliver();
    EXPECT_EQ(store.tried.count(u"a"_s), 1);
    store.ends.clear();
    deliverAfter(minute);
    EXPECT_TRUE(isHanded(refused));
}

TEST_F(HandingOver, OfAReturnComesBehindItsSale)
{
    const qint64 sale = close(u"sale"_s);
    const qint64 giveBack = close(u"return"_s);
    queue.addDependency(giveBack, sale);
    store.ends.insert(u"sale"_s, End::Refused);
    deliver();
    EXPECT_EQ(store.tried, QStringList(u"sale"_s));
    store.ends.clear();
    deliverAfter(minute);
    EXPECT_EQ(store.order, QStringList({u"sale"_s, u"return"_s}));
}

TEST_F(HandingOver, EndsAPartBeforeAReturnWhoseSaleIsInIt)
{
    const qint64 sale = close(u"sale"_s);
    const qint64 giveBack = close(u"return"_s);
    const qint64 behind = close(u"behind"_s);
    const qint64 newPassword = close(u"newPassword"_s, u"Basic two"_s);
    for (const qint64 id : {giveBack, behind, newPassword}) {
        queue.putIntoLane(id, u"card sale"_s);
    }
    queue.addDependency(giveBack, sale);
    QList<qsizetype> parts;
    store.beforeKeeping = [&](const QList<orvastore::HandedCheck>& checks) {
        parts.append(checks.size());
    };
    deliver();
    EXPECT_EQ(store.order, QStringList({u"sale"_s, u"return"_s, u"behind"_s, u"newPassword"_s}));
    EXPECT_EQ(parts, QList<qsizetype>({1, 3}));
}

TEST_F(HandingOver, DoesNotWaitForAReturnWhoseSaleTheTillDelivers)
{
    const qint64 stray = add(u"stray"_s);
    const qint64 giveBack = close(u"return"_s);
    close(u"behind"_s);
    queue.addDependency(giveBack, stray);
    server.setScript([](const Request&) { return Reply{503}; });
    deliver();
    EXPECT_EQ(store.order, QStringList(u"behind"_s));
    EXPECT_EQ(stateOf(giveBack), waits);
    server.setScript([](const Request&) { return Reply{}; });
    deliverAfter(hour);
    deliverAfter(hour);
    EXPECT_EQ(store.order, QStringList({u"behind"_s, u"return"_s}));
}

TEST_F(HandingOver, KeepsAReturnOfWhatTheStoreHasFromFallingBack)
{
    fallBackAfter(1);
    const qint64 sale = close(u"sale"_s);
    deliver();
    ASSERT_TRUE(isHanded(sale));
    const qint64 giveBack = close(u"return"_s);
    queue.addDependency(giveBack, sale);
    close(u"other"_s);
    store.isThere = false;
    EXPECT_EQ(deliverAfter(hour), "other1 other2");
    EXPECT_EQ(stateOf(giveBack), waits);
    store.isThere = true;
    deliverAfter(hour);
    EXPECT_TRUE(isHanded(giveBack));
}

TEST_F(HandingOver, TakesAlongWhatTheTillHasDoneAlready)
{
    takeStoreAway();
    const qint64 id = close(u"a"_s);
    server.setScript([](const Request& request) {
        return request.url.path() == u"/step2"_s ? Reply{503} : Reply{};
    });
    EXPECT_EQ(deliver(), "a1 a2");
    configured.reset();
    configured = std::make_unique<Configured>("[store]\ndatabase = \"dbname=orva\"\n");
    EXPECT_EQ(deliver(), "");
    EXPECT_TRUE(isHanded(id));
    const orvastore::HandedMessage message = store.kept.value(u"a"_s).messages.first();
    EXPECT_EQ(message.stepsDone, 1);
    EXPECT_EQ(message.attempts, 2);
    EXPECT_EQ(message.stepAttempts, 1);
}

TEST_F(HandingOver, LeavesWhatBelongsToNoCheckToTheTill)
{
    add(u"stray"_s);
    close(u"a"_s);
    EXPECT_EQ(deliver(), "stray1 stray2");
    EXPECT_EQ(store.order, QStringList(u"a"_s));
}

TEST_F(HandingOver, ParksADamagedMessageAndGoesOn)
{
    const qint64 damaged = close(u"a"_s);
    const qint64 sound = close(u"b"_s);
    database->execute(
        u"UPDATE queue_bodies SET payload = 'x' WHERE message_id = %1"_s.arg(damaged));
    EXPECT_EQ(deliver(), "");
    EXPECT_EQ(stateOf(damaged), parked);
    EXPECT_EQ(lastReport.parked, 1);
    EXPECT_TRUE(isHanded(sound));
    EXPECT_EQ(store.tried, QStringList(u"b"_s));
}

TEST_F(HandingOver, LeavesOutWhatIsParkedUntilItIsRetried)
{
    const qint64 id = close(u"a"_s);
    queue.park(id);
    deliver();
    EXPECT_TRUE(store.tried.isEmpty());
    queue.retry(id);
    deliver();
    EXPECT_TRUE(isHanded(id));
}

TEST_F(HandingOver, EmptiesALongQueueInPartsAndInOrder)
{
    QStringList names;
    for (int i = 0; i < 230; ++i) {
        names.append(u"c%1"_s.arg(i, 3, 10, QChar(u'0')));
        close(names.last());
    }
    qsizetype most = 0;
    store.beforeKeeping = [&](const QList<orvastore::HandedCheck>& checks) {
        most = std::max(most, checks.size());
    };
    deliver();
    EXPECT_EQ(store.order, names);
    EXPECT_GT(most, 1);
    EXPECT_LE(most, 50);
}

/// Commits that take long must not look like a delivery that stands still.
TEST_F(HandingOver, GivesSignsOfLifeAfterEveryFewChecks)
{
    for (int i = 0; i < 20; ++i) {
        close(u"c%1"_s.arg(i));
    }
    int signs = 0;
    delivery.onProgress([&](const poshost::DeliveryReport&) { ++signs; });
    QList<int> signsBefore;
    store.beforeKeeping = [&](const QList<orvastore::HandedCheck>& checks) {
        EXPECT_LE(checks.size(), 4);
        signsBefore.append(signs);
    };
    deliver();
    EXPECT_EQ(signsBefore, QList<int>({0, 1, 2, 3, 4}));
    EXPECT_EQ(lastReport.handedOver, 20);
}

TEST_F(HandingOver, ForgetsTheSecretOfWhatWasHandedOver)
{
    close(u"a"_s);
    deliver();
    poshost::Statement accounts(*database, u"SELECT count(*) FROM queue_accounts"_s);
    ASSERT_TRUE(accounts.next());
    EXPECT_EQ(accounts.value(0).toInt(), 0);
}

/// A million may wait: whoever reads them all for each few that go on takes hours.
TEST_F(HandingOver, FindsWhatWasBegunByItsIndexAlone)
{
    close(u"a"_s);
    database->execute(u"DROP INDEX queue_handing"_s);
    EXPECT_THROW(delivery.deliverDue(), BasicException);
}

TEST_F(HandingOver, IsBrokenOffByAStop)
{
    close(u"a"_s);
    store.beforeKeeping = [&](const QList<orvastore::HandedCheck>&) { delivery.requestStop(); };
    deliver();
    EXPECT_EQ(store.interrupted, 1);
}

} // namespace

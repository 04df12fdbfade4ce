// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/books/storequeue.h"
#include "tests/unit/store/storefixture.h"

#include <QDeadlineTimer>
#include <QThread>

using namespace Qt::StringLiterals;
using orvastore::Task;
using poshost::deliverypolicy::Meaning;
using storetest::checkOf;
using storetest::resultOf;

namespace {

class DeliveryBookTest : public storetest::StoreTest
{
protected:
    /// What another worker gets once the server has seen that a connection has ended.
    std::optional<Task> claimedSoon()
    {
        const QDeadlineTimer deadline(5000);
        std::optional<Task> task = other.claim();
        while (!task && !deadline.hasExpired()) {
            QThread::msleep(5);
            task = other.claim();
        }
        return task;
    }
};

} // namespace

TEST_F(DeliveryBookTest, aHandedMessageIsClaimedFinishedAndGone)
{
    handOver(u"a"_s);
    const std::optional<Task> task = book.claim();
    ASSERT_EQ(nameOf(task), u"a"_s);
    EXPECT_EQ(task->addresses.size(), 1);
    EXPECT_EQ(task->headers.value(u"Authorization"_s), u"Basic c2VjcmV0"_s);
    EXPECT_FALSE(task->attemptedBefore);
    const auto next = book.finish(*task, done);
    EXPECT_TRUE(next.isWritten);
    EXPECT_FALSE(next.task);
    EXPECT_FALSE(other.claim());
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.deliveries"_s), u"1"_s);
}

TEST_F(DeliveryBookTest, whatIsGivenBackIsFreeAtOnceAndWasNeverSent)
{
    handOver(u"a"_s, u"card"_s);
    const std::optional<Task> kept = book.claim();
    ASSERT_TRUE(kept);
    ASSERT_FALSE(other.claim());
    book.giveBack(*kept);
    const std::optional<Task> task = other.claim();
    ASSERT_EQ(nameOf(task), u"a"_s);
    EXPECT_FALSE(task->attemptedBefore) << "that the server knows it would be no success";
    EXPECT_FALSE(task->isProbe);
    orvastore::StoreQueue queue(owner);
    const QList<poshost::QueueEntry> listed = queue.list();
    ASSERT_EQ(listed.size(), 1);
    EXPECT_EQ(listed.first().attempts, 1);
    EXPECT_EQ(owner.run("SELECT count(*) FROM orva.failures(60)").number(0, 0), 0);
    EXPECT_TRUE(other.finish(*task, done).isWritten);
    EXPECT_FALSE(book.claim());
}

TEST_F(DeliveryBookTest, aProbeThatIsGivenBackIsTheNextOnes)
{
    handOver(u"a"_s, u"card"_s);
    std::optional<Task> task = book.claim();
    book.finish(*task, resultOf(Meaning::ServerAway, 0));
    sql(u"UPDATE orva.holds SET until = clock_timestamp()"_s);
    task = book.claim();
    ASSERT_TRUE(task && task->isProbe);
    book.giveBack(*task);
    task = other.claim();
    ASSERT_TRUE(task);
    EXPECT_TRUE(task->isProbe);
}

TEST_F(DeliveryBookTest, aLaneGoesOneByOneAndLanesGoBesideEachOther)
{
    handOver(u"a1"_s, u"card a"_s);
    handOver(u"a2"_s, u"card a"_s);
    handOver(u"b1"_s, u"card b"_s);
    const std::optional<Task> one = book.claim();
    const std::optional<Task> two = other.claim();
    ASSERT_EQ(nameOf(one), u"a1"_s);
    ASSERT_EQ(nameOf(two), u"b1"_s);
    EXPECT_EQ(nameOf(other.finish(*two, done).task), u"none"_s);
    EXPECT_EQ(nameOf(book.finish(*one, done).task), u"a2"_s);
}

TEST_F(DeliveryBookTest, aReturnJoinsItsSalesLaneEvenWithAnotherCard)
{
    handOver(u"sale"_s, u"card a"_s);
    orvastore::HandedCheck back = checkOf(u"return"_s, u"card b"_s);
    back.saleIdentifier = u"sale"_s;
    orvastore::handOver(owner, back);
    const std::optional<Task> sale = book.claim();
    ASSERT_EQ(nameOf(sale), u"sale"_s);
    EXPECT_FALSE(other.claim());
    EXPECT_EQ(nameOf(book.finish(*sale, done).task), u"return"_s);
}

TEST_F(DeliveryBookTest, aReturnOfAParkedSaleWaitsAndItsLaneGoesOn)
{
    handOver(u"sale"_s, u"card a"_s);
    orvastore::HandedCheck back = checkOf(u"return"_s, u"card a"_s);
    back.saleIdentifier = u"sale"_s;
    orvastore::handOver(owner, back);
    handOver(u"later"_s, u"card a"_s);
    const std::optional<Task> sale = book.claim();
    ASSERT_EQ(nameOf(sale), u"sale"_s);
    std::optional<Task> next = book.finish(*sale, resultOf(Meaning::Refused, 400)).task;
    next = next ? next : book.claim();
    ASSERT_EQ(nameOf(next), u"later"_s);
    EXPECT_FALSE(book.finish(*next, done).task);
    EXPECT_FALSE(book.claim());

    EXPECT_TRUE(
        owner.run("SELECT orva.retry($1::bigint)", {orvastore::Value::number(sale->message)})
            .isTrue(0, 0));
    const std::optional<Task> again = book.claim();
    ASSERT_EQ(nameOf(again), u"sale"_s);
    std::optional<Task> last = book.finish(*again, done).task;
    last = last ? last : book.claim();
    ASSERT_EQ(nameOf(last), u"return"_s);
    EXPECT_TRUE(book.finish(*last, done).isWritten);
    EXPECT_EQ(sql(u"SELECT sum(waiting), (SELECT count(*) FROM orva.ready), "
                  "(SELECT count(*) FROM orva.parked), (SELECT count(*) FROM "
                  "orva.deliveries) FROM orva.lanes"_s),
              u"0|0|0|3"_s);
}

TEST_F(DeliveryBookTest, stepsFollowEachOtherInOneLaneAndGoOnWhereTheyStopped)
{
    orvastore::HandedCheck check = checkOf(u"a"_s);
    check.messages.first().urls = R"({"0":"http://h/0","1":"http://h/1","2":"http://h/2"})";
    check.messages.first().stepsDone = 1;
    check.messages.first().stepAttempts = 1;
    orvastore::handOver(owner, check);
    const std::optional<Task> second_ = book.claim();
    ASSERT_TRUE(second_);
    EXPECT_EQ(second_->step, 1);
    EXPECT_TRUE(second_->attemptedBefore) << "the till has sent it and got no answer";
    const std::optional<Task> third = book.finish(*second_, done).task;
    ASSERT_TRUE(third);
    EXPECT_EQ(third->step, 2);
    EXPECT_FALSE(third->attemptedBefore);
    EXPECT_FALSE(other.claim());
    EXPECT_TRUE(book.finish(*third, done).isWritten);
    EXPECT_FALSE(other.claim());
}

TEST_F(DeliveryBookTest, aDeadWorkersLaneIsFreeAndWhatItBringsLateIsNotWritten)
{
    handOver(u"a"_s, u"card"_s);
    const std::optional<Task> task = book.claim();
    ASSERT_TRUE(task);
    first.close();
    const std::optional<Task> taken = claimedSoon();
    ASSERT_EQ(nameOf(taken), u"a"_s);
    EXPECT_TRUE(taken->attemptedBefore);
    EXPECT_FALSE(book.takeAgain(*task));
    const QByteArray late = "SELECT orva.finish($1::orva.claimed, 'StepDone', 200, false, '', '', "
                            "0, true, '{1}', 1, 5)";
    EXPECT_FALSE(first.run(late, {orvastore::Value::text(task->mark)}).isTrue(0, 0))
        << "the successor's attempt counts, even before it is finished";
    EXPECT_TRUE(other.finish(*taken, done).isWritten);
    EXPECT_EQ(sql(u"SELECT count(*) FROM orva.deliveries"_s), u"1"_s);
}

TEST_F(DeliveryBookTest, aServerThatIsAwayHoldsTheQueueForAllWorkersAndOneProbes)
{
    handOver(u"a"_s);
    handOver(u"b"_s);
    const std::optional<Task> task = book.claim();
    ASSERT_TRUE(task);
    EXPECT_FALSE(book.finish(*task, resultOf(Meaning::ServerAway, 0)).task);
    EXPECT_FALSE(other.claim());
    sql(u"UPDATE orva.holds SET until = now()"_s);
    const std::optional<Task> probe = book.claim();
    ASSERT_TRUE(probe);
    EXPECT_TRUE(probe->isProbe);
    EXPECT_FALSE(other.claim()) << "one finds out, the others wait";
    EXPECT_TRUE(book.finish(*probe, done, false).isWritten);
    EXPECT_TRUE(other.claim());
}

TEST_F(DeliveryBookTest, wrongCredentialsPauseUntilTheyAreReplaced)
{
    handOver(u"a"_s);
    const std::optional<Task> task = book.claim();
    ASSERT_TRUE(task);
    EXPECT_FALSE(book.finish(*task, resultOf(Meaning::WrongAuthorization, 401)).task);
    EXPECT_FALSE(other.claim());
    EXPECT_EQ(owner.run("SELECT orva.reauthorize('Orva', '', 'Basic new')").number(0, 0), 1);
    const std::optional<Task> again = other.claim();
    ASSERT_TRUE(again);
    EXPECT_EQ(again->headers.value(u"Authorization"_s), u"Basic new"_s);
    EXPECT_FALSE(again->attemptedBefore) << "the server has said that it took nothing";
}

TEST_F(DeliveryBookTest, aLaneWhoseServerFailsAgainAndAgainWaitsByItself)
{
    handOver(u"bad"_s, u"card a"_s);
    for (int i = 0; i < poshost::deliverypolicy::serverErrorsUntilAlone; ++i) {
        const std::optional<Task> task = book.claim();
        ASSERT_EQ(nameOf(task), u"bad"_s) << i;
        EXPECT_TRUE(book.finish(*task, resultOf(Meaning::ServerError, 500)).isWritten);
        sql(u"UPDATE orva.holds SET until = now()"_s);
    }
    handOver(u"good"_s, u"card b"_s);
    const std::optional<Task> good = book.claim();
    ASSERT_EQ(nameOf(good), u"good"_s);
    EXPECT_TRUE(book.finish(*good, done).isWritten);
    EXPECT_FALSE(other.claim());
    sql(u"UPDATE orva.delayed SET due_at = now()"_s);
    EXPECT_EQ(nameOf(orvastore::DeliveryBook(second, u"third"_s, 3).claim()), u"bad"_s);
}

TEST_F(DeliveryBookTest, parkingByHandOutOfTurnSettlingAndRetryingLoseAndDoubleNothing)
{
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s}) {
        handOver(name, u"card"_s);
    }
    const auto act = [&](const char* what, const QString& extra) {
        const QByteArray command = QByteArray("SELECT ") + what + "(id" +
                                   (QByteArray(what) == "orva.park" ? ", 'by hand'" : "") +
                                   ") FROM orva.messages WHERE extra = $1";
        return owner.run(command, {orvastore::Value::text(extra)}).isTrue(0, 0);
    };
    EXPECT_TRUE(act("orva.park", u"b"_s));
    EXPECT_TRUE(act("orva.park", u"c"_s));
    EXPECT_FALSE(act("orva.settle", u"d"_s)) << "only what is parked";
    EXPECT_TRUE(act("orva.settle", u"c"_s));
    const std::optional<Task> a = book.claim();
    ASSERT_EQ(nameOf(a), u"a"_s);
    const std::optional<Task> d = book.finish(*a, done).task;
    ASSERT_EQ(nameOf(d), u"d"_s);
    EXPECT_FALSE(book.finish(*d, done).task);
    EXPECT_TRUE(act("orva.retry", u"b"_s));
    EXPECT_FALSE(act("orva.retry", u"d"_s)) << "it is delivered";
    const std::optional<Task> b = book.claim();
    ASSERT_EQ(nameOf(b), u"b"_s);
    EXPECT_FALSE(book.finish(*b, done).task);
    EXPECT_EQ(sql(u"SELECT count(*), sum(by_hand::int) FROM orva.deliveries"_s), u"4|1"_s);
}

TEST_F(DeliveryBookTest, aLaneThatWasSeenBeforeItsMessageWasFinishedIsNotTakenForIt)
{
    handOver(u"a"_s, u"card"_s);
    handOver(u"b"_s, u"card"_s);
    const QString seen = sql(u"SELECT r FROM orva.ready r"_s);
    const std::optional<Task> a = book.claim();
    ASSERT_EQ(nameOf(a), u"a"_s);
    EXPECT_TRUE(book.finish(*a, done, false).isWritten);
    EXPECT_TRUE(second
                    .run("SELECT (orva.take($1::orva.ready, 'second', false)).mark",
                         {orvastore::Value::text(seen)})
                    .isNull(0, 0));
    EXPECT_EQ(nameOf(book.claim()), u"b"_s) << "and its lock was given back";
}

TEST_F(DeliveryBookTest, lanesGoTheShortWayAgainOnceTheyAreEmpty)
{
    handOver(u"a"_s, u"card"_s);
    const auto winding = [&] { return sql(u"SELECT winding FROM orva.lanes"_s); };
    EXPECT_EQ(winding(), u"f"_s);
    const std::optional<Task> task = book.claim();
    ASSERT_TRUE(task);
    EXPECT_TRUE(book.finish(*task, resultOf(Meaning::Refused, 400)).isWritten);
    EXPECT_EQ(winding(), u"t"_s) << "what is parked can come back before all others";
    handOver(u"b"_s, u"card"_s);
    EXPECT_TRUE(
        owner.run("SELECT orva.retry($1::bigint)", {orvastore::Value::number(task->message)})
            .isTrue(0, 0));
    std::optional<Task> next = book.claim();
    ASSERT_EQ(nameOf(next), u"a"_s);
    next = book.finish(*next, done).task;
    ASSERT_EQ(nameOf(next), u"b"_s);
    EXPECT_TRUE(book.finish(*next, done).isWritten);
    EXPECT_EQ(winding(), u"f"_s);
    handOver(u"c"_s, u"card"_s);
    EXPECT_EQ(nameOf(book.claim()), u"c"_s);
}

TEST_F(DeliveryBookTest, aFurtherAttemptIsTheOneThatCounts)
{
    handOver(u"a"_s, u"card"_s);
    const std::optional<Task> gone = book.claim();
    ASSERT_TRUE(gone);
    first.close();
    const std::optional<Task> taken = claimedSoon();
    ASSERT_TRUE(taken);
    const auto isWritten = [&](const std::optional<Task>& by) {
        return first
            .run("SELECT orva.finish($1::orva.claimed, 'StepDone', 200, false, '', '', 0, true, "
                 "'{1}', 1, 5)",
                 {orvastore::Value::text(by->mark)})
            .isTrue(0, 0);
    };
    EXPECT_FALSE(isWritten(gone));
    EXPECT_TRUE(other.finish(*taken, done).isWritten);
    EXPECT_FALSE(isWritten(taken)) << "it is written down once";
    EXPECT_EQ(sql(u"SELECT count(*), max(attempt) FROM orva.attempts"_s), u"2|2"_s);
}

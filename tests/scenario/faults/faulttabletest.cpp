// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Every operation under every fault: the call ends in time, the text says what happened, and once
// the fault is over the books of till and server agree to the kopeck.

#include "tests/scenario/faults/figures.h"
#include "tests/scenario/faults/operation.h"
#include "tests/scenario/faults/pair.h"
#include "tests/support/logcapture.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

using namespace Qt::StringLiterals;
using simulator::FaultKind;
using tests::LogCapture;
using tests::LogLine;

namespace {

const QString knownAlready =
    u"HTTP 409: чек с таким идентификатором уже был обработан; сверьте его с сервером и, "
    "если он там, закончите (queue settle)"_s;
const QString nextCustomersSale = u"10.91,0.00,0.00,0.00"_s;
constexpr qint64 openingBalance = 500'00;

/// Whether a text is the expected one, in which a "*" at the end stands for anything.
bool fits(const QString& text, const QString& expected)
{
    return expected.endsWith(u'*') ? text.startsWith(expected.chopped(1)) : text == expected;
}

/// The checks of a ledger without what differs from run to run.
QStringList figuresOf(const QString& books)
{
    QStringList rows;
    for (const QString& line : books.split(u'\n', Qt::SkipEmptyParts).mid(1)) {
        rows.append(line.section(u',', 2));
    }
    rows.sort();
    return rows;
}

qint64 kopecks(const QString& figure)
{
    return QString(figure).remove(u'.').toLongLong();
}

qint64 balanceAfter(const QStringList& books)
{
    qint64 balance = openingBalance;
    for (const QString& row : books) {
        const QStringList figures = row.split(u',');
        balance +=
            kopecks(figures[0]) - kopecks(figures[1]) + kopecks(figures[2]) - kopecks(figures[3]);
    }
    return balance;
}

/// Keeps the delivery's lines out of the test's output; the plug-in's are captured.
struct Quiet
{
    Quiet()
    {
        QLoggingCategory::setFilterRules(
            u"orva.debug=true\norva.info=true\nposhost.delivery=false"_s);
    }
};

class FaultTable : public ::testing::TestWithParam<std::tuple<Operation, FaultRow>>
{
protected:
    FaultTable() { Figures::instance().countPair(); }

    static int nextNumber()
    {
        static int number = 0;
        return ++number;
    }

    const Operation& operation() const { return std::get<0>(GetParam()); }
    const FaultRow& row() const { return std::get<1>(GetParam()); }

    QString transportText() const
    {
        return u"Сервер %1: %2"_s.arg(pair.server.hostName(), QString::fromUtf8(row().transport));
    }

    /// The cashier has been told, and the log says what the transport met.
    void expectCashierTold()
    {
        const QString reason = QString::fromUtf8(row().cashier);
        EXPECT_EQ(pair.refusal.toStdString(), reason.toStdString());
        const QString notice =
            operation().isReturn
                ? u"The loyalty system does not answer about the return (%1); it is confirmed all "
                  "the same."_s
                : u"The sale goes on without the loyalty system (%1)."_s;
        const QStringList expected =
            row().isWell() ? QStringList() : QStringList(notice.arg(reason));
        QStringList notices = pair.till.desk().takeNotices();
        if (!expected.isEmpty()) { // what a server wrote to its refusal may stand below
            notices.removeIf(
                [](const QString& line) { return line.startsWith(u"The server says: "_s); });
        }
        EXPECT_EQ(notices.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
        expectLogged();
    }

    void expectLogged() const
    {
        QStringList errors;
        for (const LogLine& line : log.lines()) {
            if (line.level == QtCriticalMsg && !line.text.isEmpty()) {
                errors.append(line.text);
            }
        }
        const QString expected = expectedLogLine();
        ASSERT_EQ(errors.size(), expected.isEmpty() ? 0 : 1) << errors.join(u'\n').toStdString();
        EXPECT_TRUE(expected.isEmpty() || fits(errors.first(), expected))
            << errors.first().toStdString() << "\ninstead of\n"
            << expected.toStdString();
    }

    QString expectedLogLine() const
    {
        if (*row().transport != '\0') {
            return u"Ошибка при выполнении запроса: "_s + transportText();
        }
        if (QString::fromUtf8(row().cashier) == u"Некорректный ответ от сервера"_s) {
            return u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: *"_s;
        }
        return {};
    }

    /// The till's only request was answered "known already", since somebody on the way had sent it
    /// before. The till cannot tell that from a check of somebody else's: a person must look.
    bool isTakenForAnothers() const
    {
        return row().fault.kind == FaultKind::ResentByProxy &&
               operation().endpoint == std::string_view("checkconfirm");
    }

    /// The message stands in the queue with what happened, or is gone.
    void expectQueueTold()
    {
        QString text = row().queue == nullptr ? transportText() : QString::fromUtf8(row().queue);
        poshost::QueueState state = row().state;
        if (isTakenForAnothers()) {
            text = knownAlready;
            state = poshost::QueueState::Parked;
        }
        const auto entry = pair.till.undelivered();
        ASSERT_EQ(entry.has_value(), state != poshost::QueueState::Delivered);
        if (entry) {
            EXPECT_TRUE(fits(entry->lastError, text))
                << entry->lastError.toStdString() << "\ninstead of\n"
                << text.toStdString();
            EXPECT_EQ(entry->state, state);
        }
    }

    /// One request was made and met the fault; where a kept connection is closed without an answer
    /// the transport sends it once more.
    void expectStruckOnce() const
    {
        const FaultKind kind = row().fault.kind;
        if (kind == FaultKind::RefusedConnection || kind == FaultKind::WrongCertificate) {
            return; // nobody is there who could count
        }
        const bool maybeTwice = kind == FaultKind::RequestLost || kind == FaultKind::ReplyLost;
        EXPECT_GE(pair.server.struck(), 1) << "the fault has not struck";
        EXPECT_LE(pair.server.struck(), maybeTwice ? 2 : 1);
    }

    void serveNextCustomer()
    {
        pair.till.openSale();
        pair.till.presentCard();
        EXPECT_EQ(pair.till.desk().close().refusal.toStdString(), "");
    }

    void expectDrained()
    {
        const auto left = pair.till.undelivered();
        ASSERT_EQ(left.has_value(), isTakenForAnothers())
            << (left ? left->lastError : u"nothing is left"_s).toStdString();
        if (left) {
            EXPECT_EQ(left->state, poshost::QueueState::Parked);
            EXPECT_EQ(left->lastError.toStdString(), knownAlready.toStdString());
        }
    }

    void expectBooks() const
    {
        QStringList expected =
            row().isWell() ? operation().booksWhenWell : operation().booksWhenStruck;
        expected.append(nextCustomersSale);
        expected.sort();
        const QString books = const_cast<Pair&>(pair).till.books();
        EXPECT_EQ(books.toStdString(), pair.server.books().toStdString());
        EXPECT_EQ(figuresOf(books).join(u'\n').toStdString(), expected.join(u'\n').toStdString());
        EXPECT_EQ(pair.server.balanceKopecks(), balanceAfter(expected));
    }

    LogCapture log; // before the till, which logs when it starts
    Quiet quiet;
    Pair pair{row(), nextNumber()};
};

TEST_P(FaultTable, EndsInTimeSaysWhatHappenedAndKeepsTheBooks)
{
    operation().prepare(pair);
    pair.till.desk().takeNotices();
    log.clear();
    pair.server.begin(QString::fromLatin1(operation().endpoint));

    operation().strike(pair);

    expectStruckOnce();
    if (operation().isDelivery) {
        expectQueueTold();
    } else {
        expectCashierTold();
    }
    const int struck = pair.server.struck();
    operation().goOn(pair, row().isWell());
    if (!row().isWell()) {
        EXPECT_EQ(pair.server.struck(), struck) << "the server was asked after it had failed";
    }

    pair.server.end();
    serveNextCustomer();
    pair.till.drain();
    expectDrained();
    expectBooks();
}

std::string nameOf(const ::testing::TestParamInfo<FaultTable::ParamType>& pair)
{
    std::string name =
        std::string(std::get<0>(pair.param).name) + "_under_" + std::get<1>(pair.param).name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, FaultTable,
                         ::testing::Combine(::testing::ValuesIn(operations()),
                                            ::testing::ValuesIn(faultRows())),
                         nameOf);

TEST(FaultRows, holdEveryKindOfFault)
{
    std::set<FaultKind> kinds;
    for (const FaultRow& row : faultRows()) {
        kinds.insert(row.fault.kind);
    }
    for (const simulator::FaultDescription& description : simulator::faultDescriptions()) {
        EXPECT_TRUE(kinds.contains(description.kind)) << description.name;
    }
}

} // namespace

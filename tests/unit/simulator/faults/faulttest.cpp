// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Which request meets which fault, and what becomes of it, without any HTTP.

#include "simulator/faults/faultplan.h"
#include "simulator/faults/faultyservice.h"
#include "simulator/rules/configerror.h"
#include "simulator/rules/rulesreader.h"
#include "tests/support/struck.h"
#include "tests/unit/simulator/servicefixture.h"

#include <set>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

Request about(const char* endpoint, const QString& card = {})
{
    return post(endpoint, card.isEmpty() ? QByteArray()
                                         : "<RawCheck><cardNumber>" + card.toUtf8() +
                                               "</cardNumber></RawCheck>");
}

/// The requests of a row that are struck, as "x" and "-".
std::string struck(FaultPlan& plan, int count, const Request& request)
{
    std::string row;
    for (int i = 0; i < count; ++i) {
        row += plan.take(request) ? 'x' : '-';
    }
    return row;
}

std::vector<FaultRule> faultsOf(const QByteArray& text)
{
    return readRules(text, u"shop.toml"_s).faults;
}

QString complaintAbout(const QByteArray& text)
{
    try {
        faultsOf(text);
    } catch (const ConfigError& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

TEST(FaultNames, areEachFoundAgainAndDifferent)
{
    std::set<QString> names;
    for (const FaultDescription& row : faultDescriptions()) {
        const QString name = QString::fromLatin1(row.name);
        EXPECT_EQ(faultKind(name), row.kind) << row.name;
        EXPECT_EQ(describe(row.kind).name, row.name);
        EXPECT_TRUE(names.insert(name).second) << row.name;
    }
    EXPECT_EQ(faultKind(u"reply-los"_s), std::nullopt);
    EXPECT_EQ(requestFaultNames().size(), static_cast<qsizetype>(names.size()) - 3);
}

TEST(FaultPlan, withoutRulesLetsEverythingPass)
{
    FaultPlan plan;
    EXPECT_EQ(struck(plan, 3, about("precheck")), "---");
    EXPECT_EQ(struckBy(plan), 0);
}

TEST(FaultPlan, strikesTheNthMatchingRequestOnce)
{
    FaultPlan plan(faultsOf("[[fault]]\nkind = 'reply-lost'\nendpoint = 'paymenttry'\n"
                            "request = 3\n"));
    EXPECT_EQ(struck(plan, 5, about("precheck")), "-----");
    EXPECT_EQ(struck(plan, 5, about("paymenttry")), "--x--");
    EXPECT_EQ(struckBy(plan), 1);
}

TEST(FaultPlan, strikesFromTheNthRequestOnAsOftenAsIsSaid)
{
    FaultPlan plan(faultsOf("[[fault]]\nkind = 'cut-body'\nrequest = 2\ntimes = 2\n"));
    EXPECT_EQ(struck(plan, 5, about("precheck")), "-xx--");
    plan.setRules(faultsOf("[[fault]]\nkind = 'cut-body'\ntimes = 1\n"));
    EXPECT_EQ(struck(plan, 3, about("precheck")), "x--");
    plan.setRules(faultsOf("[[fault]]\nkind = 'cut-body'\n"));
    EXPECT_EQ(struck(plan, 3, about("precheck")), "xxx");
}

TEST(FaultPlan, knowsTheCardOfTheCheck)
{
    FaultPlan plan(faultsOf("[[fault]]\nkind = 'delay'\ncard = '17'\nrequest = 2\n"));
    EXPECT_EQ(struck(plan, 3, about("precheck", u"24"_s)), "---");
    EXPECT_EQ(struck(plan, 3, about("precheck")), "---");
    EXPECT_EQ(struck(plan, 3, post("precheck", "<RawCheck")), "---");
    EXPECT_EQ(struck(plan, 3, about("precheck", u"17"_s)), "-x-");
}

TEST(FaultPlan, ofTheSameSeedStrikesTheSameRequests)
{
    const QByteArray rules = "[[fault]]\nkind = 'cut-body'\nprobability = 0.25\n";
    FaultPlan one(faultsOf("seed = 7\n" + rules));
    FaultPlan same(faultsOf(rules + "seed = 7\n"));
    FaultPlan other(faultsOf("seed = 8\n" + rules));
    const std::string row = struck(one, 1000, about("precheck"));
    EXPECT_EQ(struck(same, 1000, about("precheck")), row);
    EXPECT_NE(struck(other, 1000, about("precheck")), row);
    const auto hits = std::count(row.begin(), row.end(), 'x');
    EXPECT_GT(hits, 200); // 250 expected, 14 is the standard deviation
    EXPECT_LT(hits, 300);
    EXPECT_EQ(struckBy(one), hits);
}

TEST(FaultPlan, ofTwoRulesThatStrikeTakesTheFirstAndCountsForBoth)
{
    FaultPlan plan(faultsOf("[[fault]]\nkind = 'cut-body'\nrequest = 2\n"
                            "[[fault]]\nkind = 'delay'\nrequest = 2\ntimes = 2\n"));
    const Request request = about("precheck");
    EXPECT_FALSE(plan.take(request));
    EXPECT_EQ(plan.take(request)->kind, FaultKind::CutBody);
    EXPECT_EQ(plan.take(request)->kind, FaultKind::Delay);
    EXPECT_EQ(plan.take(request)->kind, FaultKind::Delay);
    EXPECT_FALSE(plan.take(request));
}

TEST(FaultRules, areReadWithAllTheirKeys)
{
    const auto faults =
        faultsOf("seed = 5\n[[fault]]\nkind = 'status-after-booking'\nstatus = 503\n"
                 "body = 'Занято'\nendpoint = 'checkconfirm'\ncard = '17'\nrequest = 4\n"
                 "times = 6\nprobability = 0.5\n[[fault]]\nkind = 'slow-drip'\nseconds = 1.5\n"
                 "seed = 9\n");
    ASSERT_EQ(faults.size(), 2U);
    EXPECT_EQ(faults[0].fault.kind, FaultKind::StatusAfterBooking);
    EXPECT_TRUE(faults[0].fault.isAfterBooking());
    EXPECT_EQ(faults[0].fault.status, 503);
    EXPECT_EQ(faults[0].fault.body, QByteArray("Занято"));
    EXPECT_EQ(faults[0].endpoint, u"checkconfirm"_s);
    EXPECT_EQ(faults[0].card, u"17"_s);
    EXPECT_EQ(faults[0].firstRequest, 4);
    EXPECT_EQ(faults[0].times, 6);
    EXPECT_EQ(faults[0].probability, 0.5);
    EXPECT_EQ(faults[0].seed, 5U);
    EXPECT_EQ(faults[1].fault.duration.count(), 1500);
    EXPECT_EQ(faults[1].seed, 9U);
    EXPECT_EQ(faults[1].times, FaultRule::always);
}

TEST(FaultRules, thatAreWrongAreNamedWithLineAndNearestName)
{
    const std::vector<std::pair<QByteArray, QString>> cases{
        {"[[fault]]\n", u"shop.toml:1: the key \"fault.kind\" is missing"_s},
        {"[[fault]]\nkind = 'reply-los'\n",
         u"shop.toml:2: the key \"fault.kind\" is \"reply-los\": did you mean \"reply-lost\"?"_s},
        {"[[fault]]\nkind = 'delay'\nendpoint = 'prechek'\n",
         u"shop.toml:3: the key \"fault.endpoint\" is \"prechek\": did you mean \"precheck\"?"_s},
        {"[[fault]]\nkind = 'delay'\nendpoint = 'ledger'\n",
         u"shop.toml:3: the key \"fault.endpoint\" is \"ledger\": it must be \"precheck\", "
         "\"paymenttry\" or \"checkconfirm\""_s},
        {"[[fault]]\nkind = 'delay'\nsecond = 1\n",
         u"shop.toml:3: the key \"fault.second\" is unknown: did you mean \"fault.seconds\"?"_s},
        {"[[fault]]\nkind = 'delay'\nseconds = -1\n",
         u"shop.toml:3: the key \"fault.seconds\" must be a number from 0 to 3600"_s},
        {"[[fault]]\nkind = 'delay'\nseconds = nan\n",
         u"shop.toml:3: the key \"fault.seconds\" must be a number from 0 to 3600"_s},
        {"[[fault]]\nkind = 'delay'\nstatus = 500\n",
         u"shop.toml:3: the key \"fault.status\" means nothing for \"delay\""_s},
        {"[[fault]]\nkind = 'status'\nseconds = 1\n",
         u"shop.toml:3: the key \"fault.seconds\" means nothing for \"status\""_s},
        {"[[fault]]\nkind = 'status'\nstatus = 199\n",
         u"shop.toml:3: the key \"fault.status\" must be a whole number from 200 to 599"_s},
        {"[[fault]]\nkind = 'status'\nrequest = 0\n",
         u"shop.toml:3: the key \"fault.request\" must be a whole number from 1 to 2147483647"_s},
        {"[[fault]]\nkind = 'status'\nprobability = 5\n",
         u"shop.toml:3: the key \"fault.probability\" must be a number from 0 to 1"_s},
        {"[[fault]]\nkind = 'refused-connection'\n",
         u"shop.toml:2: the key \"fault.kind\" cannot be \"refused-connection\" here; no running "
         "server makes it: stop this one"_s},
        {"[[fault]]\nkind = 'hanging-resolution'\n",
         u"shop.toml:2: the key \"fault.kind\" cannot be \"hanging-resolution\" here; it happens "
         "at the till: let the till ask a name server that does not answer"_s},
        {"[[fault]]\nkind = 'wrong-certificate'\n",
         u"shop.toml:2: the key \"fault.kind\" cannot be \"wrong-certificate\" here; every "
         "connection meets it: give the server another certificate in [tls]"_s},
        {"seed = -1\n",
         u"shop.toml:1: the key \"seed\" must be a whole number from 0 to 9223372036854775807"_s},
        {"fault = 1\n",
         u"shop.toml:1: the key \"fault\" must be an array of tables, written [[fault]]"_s},
        {"[tls]\nkey = 'a'\n", u"shop.toml:1: the key \"tls.certificate\" is missing"_s},
        {"[tls]\ncertificat = 'a'\n",
         u"shop.toml:2: the key \"tls.certificat\" is unknown: did you mean "
         "\"tls.certificate\"?"_s},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(complaintAbout(text), expected);
    }
}

TEST(FaultRules, examplesInTheBuiltInRulesAreRules)
{
    QByteArray text = builtInRules();
    EXPECT_TRUE(faultsOf(text).empty());
    text.replace("\n# ", "\n##").replace("\n#", "\n"); // sentences stay comments
    const Rules rules = readRules(text, u"shop.toml"_s);
    ASSERT_EQ(rules.faults.size(), 3U);
    EXPECT_EQ(rules.faults[0].fault.kind, FaultKind::ReplyLost);
    EXPECT_EQ(rules.faults[0].firstRequest, 3);
    EXPECT_EQ(rules.faults[0].seed, 7U);
    EXPECT_EQ(rules.faults[1].probability, 0.05);
    EXPECT_EQ(rules.faults[2].fault.duration.count(), 20'000);
    EXPECT_TRUE(rules.certificateFile.endsWith(u"/server.pem"_s));
    ASSERT_EQ(rules.answers.size(), 2U);
    EXPECT_EQ(rules.answers[0].firstRequest, 2);
    EXPECT_EQ(rules.answers[1].status, 424);
    EXPECT_TRUE(rules.isStrict);
    EXPECT_TRUE(rules.refusesUnmatched);
}

TEST(FaultRules, namesOfCertificatesStartAtTheFolderOfTheFile)
{
    const Rules rules =
        readRules("[tls]\ncertificate = 'a.pem'\nkey = '/b.key'\n", u"/shop/rules.toml"_s);
    EXPECT_EQ(rules.certificateFile, u"/shop/a.pem"_s);
    EXPECT_EQ(rules.keyFile, u"/b.key"_s);
}

/// The real service behind faults.
class FaultyServiceTest : public ServiceFixture
{
protected:
    Answer answer(FaultKind kind, const char* endpoint, const QByteArray& body, int status = 500)
    {
        FaultRule rule;
        rule.fault.kind = kind;
        rule.fault.status = status;
        rule.times = 1;
        plan.setRules({rule});
        return faulty.handle(post(endpoint, body));
    }

    Answer sale(const QString& check = u"c-1"_s) { return precheck(document(saleOfTwo(check))); }

    /// The confirmation of a sale whose pre-check and payment try are done.
    QByteArray tried(const QString& check = u"c-1"_s)
    {
        const QByteArray body = confirmation(
            sale(check).body, {{u"1"_s, {u"5.00"_s, u"47.00"_s}}, {u"2"_s, {u"6.00"_s, u"7.00"_s}}},
            u"95.00"_s);
        EXPECT_EQ(paymentTry(body).status, 200);
        return body;
    }

    qsizetype booked() const { return static_cast<qsizetype>(ledger().checks.size()); }

    FaultPlan plan;
    const FaultyService faulty{[this](const Request& from) { return service->handle(from); }, plan};
};

TEST_F(FaultyServiceTest, beforeBookingNothingIsBooked)
{
    const QByteArray body = tried();
    int kinds = 0;
    for (const FaultDescription& row : faultDescriptions()) {
        if (row.stage == FaultStage::BeforeBooking) {
            ++kinds;
            const Answer got = answer(row.kind, "checkconfirm", body, 503);
            ASSERT_TRUE(got.fault) << row.name;
            EXPECT_EQ(got.fault->kind, row.kind);
            EXPECT_EQ(booked(), 0) << row.name;
        }
    }
    EXPECT_EQ(kinds, 3);
    EXPECT_EQ(answer(FaultKind::Status, "checkconfirm", body, 503).status, 503);
}

TEST_F(FaultyServiceTest, afterBookingItIsBookedOnce)
{
    QStringList checks;
    for (const FaultDescription& row : faultDescriptions()) {
        if (row.stage == FaultStage::AfterBooking) {
            // a check of its own: one that is booked already stays booked whatever a fault does
            const QByteArray body = tried(QString::fromLatin1(row.name));
            EXPECT_EQ(booked(), checks.size()) << row.name;
            checks.append(QString::fromLatin1(row.name));
            const Answer got = answer(row.kind, "checkconfirm", body);
            ASSERT_TRUE(got.fault) << row.name;
            EXPECT_EQ(got.fault->kind, row.kind);
            EXPECT_EQ(booked(), checks.size()) << row.name;
            EXPECT_EQ(ledger().checks.back().checkId, checks.last());
        }
    }
    EXPECT_EQ(checks.size(), requestFaultNames().size() - 3) << "three strike before the booking";
}

TEST_F(FaultyServiceTest, aDuplicateIsHandledTwiceAndAnsweredByOneOfBoth)
{
    const QByteArray body = tried();
    const Answer first = answer(FaultKind::DuplicatedDelivery, "checkconfirm", body);
    EXPECT_EQ(first.status, 200);
    EXPECT_EQ(booked(), 1);
    const Answer second = answer(FaultKind::ResentByProxy, "checkconfirm", body);
    EXPECT_EQ(second.status, 409);
}

TEST_F(FaultyServiceTest, aStatusAfterBookingHidesTheAnswerAndKeepsTheLog)
{
    const QByteArray body = tried();
    const Answer got = answer(FaultKind::StatusAfterBooking, "checkconfirm", body, 302);
    EXPECT_EQ(got.status, 302);
    EXPECT_EQ(got.body, QByteArray());
    EXPECT_EQ(got.location, QByteArray("/api/1.x/checkconfirm/moved"));
    EXPECT_EQ(got.checkId, u"c-1"_s);
}

TEST_F(FaultyServiceTest, garbledBytesFollowFromTheSeed)
{
    const QByteArray request = document(saleOfTwo(u"c-1"_s));
    const QByteArray one = answer(FaultKind::GarbledBody, "precheck", request).body;
    const QByteArray same = answer(FaultKind::GarbledBody, "precheck", request).body;
    EXPECT_EQ(one, same);
    EXPECT_EQ(one.size(), sale().body.size());
    EXPECT_NE(one, sale().body);
}

TEST_F(FaultyServiceTest, theWrongEncodingHasOneByteForACyrillicLetter)
{
    const QByteArray right = sale().body;
    ASSERT_TRUE(right.contains(QByteArray("<name>Анна</name>")));
    const QByteArray wrong =
        answer(FaultKind::WrongEncoding, "precheck", document(saleOfTwo(u"c-1"_s))).body;
    EXPECT_TRUE(wrong.contains("<name>\xC0\xED\xED\xE0</name>"));
    EXPECT_LT(wrong.size(), right.size());
}

} // namespace
} // namespace simulator::test

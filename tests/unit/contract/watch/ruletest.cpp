// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Hosts in this process: one that keeps every rule, and broken ones.

#include "contract/watch/rule.h"
#include "tests/unit/client/printers.h"
#include "tests/unit/contract/watch/brokenhosts.h"
#include "tests/unit/contract/watch/rightorder.h"

#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tests::BrokenHost;
using tests::WatchedHost;

namespace {

class BrokenHostTest : public ::testing::TestWithParam<BrokenHost>
{};

std::string nameOf(const ::testing::TestParamInfo<BrokenHost>& info)
{
    std::string name;
    bool upper = true;
    for (const char* at = info.param.mistake; *at != '\0'; ++at) {
        if (std::isalnum(static_cast<unsigned char>(*at)) == 0) {
            upper = true;
            continue;
        }
        name += upper ? char(std::toupper(static_cast<unsigned char>(*at))) : *at;
        upper = false;
    }
    return name;
}

QString ruleOf(const BrokenHost& host)
{
    return QString::fromLatin1(host.found).section(u' ', 0, 0);
}

} // namespace

TEST_P(BrokenHostTest, IsFoundByTheRuleAndNothingElseIs)
{
    WatchedHost host;
    GetParam().run(host);
    EXPECT_EQ(host.findings(), QStringList{QString::fromLatin1(GetParam().found)})
        << host.written().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Watch, BrokenHostTest, ::testing::ValuesIn(tests::brokenHosts()), nameOf);

TEST(WatchRules, EachHasABrokenHost)
{
    QSet<QString> shown;
    for (const BrokenHost& host : tests::brokenHosts()) {
        shown.insert(ruleOf(host));
    }
    QSet<QString> known;
    for (const watch::Rule& rule : watch::allRules) {
        known.insert(QString::fromLatin1(rule.name.data(), qsizetype(rule.name.size())));
    }
    EXPECT_EQ(known.size(), qsizetype(watch::allRules.size())) << "two rules have one name";
    EXPECT_EQ(shown, known);
}

TEST(WatchRules, EachIsExplainedToThoseWhoWriteATill)
{
    QFile page(QStringLiteral(ORVA_STEP_BY_STEP));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly)) << page.errorString().toStdString();
    const QString text = QString::fromUtf8(page.readAll());
    for (const watch::Rule& rule : watch::allRules) {
        const std::string quoted = '`' + std::string(rule.name) + '`';
        EXPECT_TRUE(text.contains(QString::fromStdString(quoted))) << quoted;
    }
}

TEST(WatchedOrder, AHostThatKeepsEveryRuleIsFoundInNothing)
{
    WatchedHost host;
    host.init();
    tests::sell(host, u"plain"_s);

    const auto withPoints = WatchedHost::sale(u"points"_s);
    host.takeUp(withPoints);
    tests::ask(host, withPoints);
    tests::payWithPoints(host, withPoints, 30);
    tests::close(host, withPoints);

    const auto changed = WatchedHost::sale(u"changed"_s);
    host.takeUp(changed);
    tests::ask(host, changed);
    changed->setGoodsItems(changed->getGoodsItems().mid(1));
    tests::ask(host, changed);
    tests::close(host, changed);

    const auto back = WatchedHost::returnOf(u"plain"_s);
    host.takeUp(back);
    tests::close(host, back);

    const auto givenUp = WatchedHost::sale(u"given up"_s);
    host.takeUp(givenUp);
    tests::ask(host, givenUp);
    host.system().rollback(givenUp);
    host.layDown();

    host.takeDown();
    EXPECT_EQ(host.findings(), QStringList());
    EXPECT_TRUE(host.written().endsWith(u" calls watched, 0 findings\n"_s))
        << host.written().toStdString();
    EXPECT_EQ(host.queue.taken, 4);
}

TEST(WatchedOrder, ASuspendedCheckIsRestoredAndClosed)
{
    WatchedHost host;
    host.init();
    const auto document = WatchedHost::sale();
    host.takeUp(document);
    tests::ask(host, document);
    host.system().clearLoyaltyData();
    host.layDown();
    tests::sell(host, u"another"_s);
    host.takeUp(document);
    EXPECT_TRUE(host.system().restoreLoyaltySystem());
    tests::close(host, document);
    host.takeDown();
    EXPECT_EQ(host.findings(), QStringList());
}

TEST(WatchedOrder, ClosingIsTriedAgainAfterRollbackAndRestore)
{
    WatchedHost host;
    host.init();
    const auto document = WatchedHost::sale();
    host.takeUp(document);
    tests::ask(host, document);
    qputenv("POSHOST_WATCH_FAIL", "commit");
    EXPECT_ANY_THROW(host.system().commit(document));
    host.system().rollback(document);
    host.system().restoreLoyaltySystem();
    tests::close(host, document);
    host.takeDown();
    EXPECT_EQ(host.findings(), QStringList());
}

TEST(WatchedOrder, AFindingNamesRuleCallAndWhatToDo)
{
    WatchedHost host;
    host.init();
    host.system().commit({});
    EXPECT_EQ(host.written(), u"poshost-watch: no-document: commit: Call setDocument with the "
                              "document, and hand the document over.\n"_s);
}

TEST(WatchedOrder, FindingsGoToTheStandardErrorWhereNoFileIsNamed)
{
    WatchedHost host;
    qunsetenv("POSHOST_WATCH_FILE");
    host.init();
    ::testing::internal::CaptureStderr();
    host.system().commit({});
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "poshost-watch: no-document: commit: Call setDocument with the document, and hand "
              "the document over.\n");
}

TEST(WatchedOrder, AFileThatCannotBeWrittenIsSaid)
{
    WatchedHost host;
    qputenv("POSHOST_WATCH_FILE", "/nonexistent/findings");
    host.init();
    ::testing::internal::CaptureStderr();
    host.system().commit({});
    const std::string said = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("/nonexistent/findings cannot be written"), std::string::npos) << said;
    EXPECT_NE(said.find("no-document: commit"), std::string::npos) << said;
}

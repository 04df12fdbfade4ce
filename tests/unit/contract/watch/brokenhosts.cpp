// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/contract/watch/brokenhosts.h"

#include "tests/unit/contract/watch/rightorder.h"

#include <thread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

/// A document that is taken up and asked about.
QSharedPointer<Document> asked(WatchedHost& host)
{
    host.init();
    auto document = WatchedHost::sale();
    host.takeUp(document);
    ask(host, document);
    return document;
}

const QList<BrokenHost> lifeOfTheObject{
    {"asks before init", "before-init in request",
     [](WatchedHost& host) {
         const auto document = WatchedHost::sale();
         host.takeUp(document);
         host.system().request(document);
     }},
    {"calls init for every check", "init-twice in init",
     [](WatchedHost& host) {
         host.init();
         sell(host, u"1"_s);
         host.init();
     }},
    {"confirms after deinit", "after-deinit in commit",
     [](WatchedHost& host) {
         const auto document = asked(host);
         host.layDown();
         host.system().deinit();
         host.takeUp(document);
         host.system().commit(document);
     }},
    {"deletes the object without deinit", "ended-without-deinit in the destructor",
     [](WatchedHost& host) {
         host.init();
         host.drop();
     }},
    {"asks on a thread of its own", "other-thread in request",
     [](WatchedHost& host) {
         host.init();
         const auto document = WatchedHost::sale();
         host.takeUp(document);
         std::thread([&] { host.system().request(document); }).join();
     }},
    {"ends with a document taken up", "document-left in deinit",
     [](WatchedHost& host) {
         const auto document = asked(host);
         host.system().rollback(document);
         host.system().deinit();
     }},
};

const QList<BrokenHost> services{
    {"sets no configuration", "missing-service in init",
     [](WatchedHost& host) {
         const InSingleton<Config> none(nullptr);
         host.init();
     }},
    {"takes its session out", "missing-service in request",
     [](WatchedHost& host) {
         host.init();
         const auto document = WatchedHost::sale();
         host.takeUp(document);
         const InSingleton<Session> none(nullptr);
         host.system().request(document);
     }},
    {"takes its queue out", "missing-service in commit",
     [](WatchedHost& host) {
         const auto document = asked(host);
         const InSingleton<DBQueueBroker> none(nullptr);
         host.system().commit(document);
     }},
    {"tells the session of no document", "session-document in identifyByCard",
     [](WatchedHost& host) {
         host.init();
         const auto document = WatchedHost::sale();
         host.system().setDocument(document);
         auto record = document->getCardRecord(15);
         host.system().identifyByCard(record, ECardNumberType::Manual);
     }},
    {"has another document in the session", "session-document in spendPoints",
     [](WatchedHost& host) {
         asked(host);
         host.session.setDocument(WatchedHost::sale(u"other"_s));
         host.system().spendPoints();
     }},
};

const QList<BrokenHost> documents{
    {"forgets setDocument", "no-document in request",
     [](WatchedHost& host) {
         host.init();
         const auto document = WatchedHost::sale();
         host.session.setDocument(document);
         host.system().request(document);
     }},
    {"hands over no document", "no-document in commit",
     [](WatchedHost& host) {
         asked(host);
         host.system().commit({});
     }},
    {"asks for the points of no document", "no-document in getPointsForSpend",
     [](WatchedHost& host) {
         asked(host);
         host.system().getPointsForSpend({});
     }},
    {"hands over another document", "other-document in request",
     [](WatchedHost& host) {
         host.init();
         host.takeUp(WatchedHost::sale());
         host.system().request(WatchedHost::sale(u"other"_s));
     }},
    {"asks about a receipt of goods", "document-type in request",
     [](WatchedHost& host) {
         host.init();
         const auto document = WatchedHost::sale();
         document->setDocumentType(2);
         host.takeUp(document);
         host.system().request(document);
     }},
    {"asks about a document without a card record", "no-card in request",
     [](WatchedHost& host) {
         host.init();
         const auto document = QSharedPointer<Document>::create();
         document->setDocumentType(EDocumentType::Sale);
         host.takeUp(document);
         host.system().request(document);
     }},
    {"presents a record without a card", "no-card in identifyByCard",
     [](WatchedHost& host) {
         host.init();
         host.takeUp(WatchedHost::sale());
         auto record = QSharedPointer<DocumentCardRecord>::create();
         host.system().identifyByCard(record, ECardNumberType::Manual);
     }},
    {"gives a check up without telling", "not-cleared in identifyByCard",
     [](WatchedHost& host) {
         asked(host);
         host.layDown();
         const auto next = WatchedHost::sale(u"next"_s);
         host.takeUp(next);
         ask(host, next);
     }},
    {"asks about a closed check", "after-close in request",
     [](WatchedHost& host) {
         host.init();
         const auto document = WatchedHost::sale();
         host.takeUp(document);
         ask(host, document);
         close(host, document);
         host.takeUp(document);
         host.system().request(document);
     }},
};

const QList<BrokenHost> effects{
    {"asks anew with the discounts on the document", "impacts-left in request",
     [](WatchedHost& host) { host.system().request(asked(host)); }},
    {"sets points before it has asked", "spend-without-request in setPointsForSpend",
     [](WatchedHost& host) {
         host.init();
         const auto document = WatchedHost::sale();
         host.takeUp(document);
         host.system().setPointsForSpend(document, 10);
     }},
    {"spends points before it has asked", "spend-without-request in spendPoints",
     [](WatchedHost& host) {
         host.init();
         host.takeUp(WatchedHost::sale());
         host.system().spendPoints();
     }},
    {"spends points again", "points-left in spendPoints",
     [](WatchedHost& host) {
         const auto document = asked(host);
         payWithPoints(host, document, 20);
         host.system().spendPoints();
     }},
    {"recalculates without spending", "recalculate-without-spending in recalculatePointsForEarn",
     [](WatchedHost& host) {
         asked(host);
         host.system().recalculatePointsForEarn();
     }},
    {"recalculates again", "recalculate-twice in recalculatePointsForEarn",
     [](WatchedHost& host) {
         payWithPoints(host, asked(host), 20);
         host.system().recalculatePointsForEarn();
     }},
};

const QList<BrokenHost> endings{
    {"confirms the next check without asking", "commit-without-request in commit",
     [](WatchedHost& host) {
         host.init();
         sell(host, u"first"_s);
         const auto next = WatchedHost::sale(u"next"_s);
         host.takeUp(next);
         host.system().commit(next);
     }},
    {"confirms a check whose last request has failed", "commit-without-request in commit",
     [](WatchedHost& host) {
         const auto document = asked(host);
         document->removeImpacts(15);
         qputenv("POSHOST_WATCH_FAIL", "request:2");
         EXPECT_FALSE(host.system().request(document));
         host.system().commit(document);
     }},
    {"changes the goods after it has asked", "changed-since-request in commit",
     [](WatchedHost& host) {
         const auto document = asked(host);
         document->setGoodsItems(document->getGoodsItems().mid(1));
         host.system().commit(document);
     }},
    {"confirms again", "commit-twice in commit",
     [](WatchedHost& host) {
         const auto document = asked(host);
         host.system().commit(document);
         host.system().commit(document);
     }},
    {"confirms a return again", "commit-twice in commit",
     [](WatchedHost& host) {
         host.init();
         const auto document = WatchedHost::returnOf(u"sale"_s);
         host.takeUp(document);
         host.system().commit(document);
         host.system().commit(document);
     }},
    {"closes a check without confirming it", "cleared-unconfirmed in clearAfterClose",
     [](WatchedHost& host) {
         asked(host);
         host.system().clearAfterClose();
     }},
    {"restores what it has asked for", "restore-over-data in restoreLoyaltySystem",
     [](WatchedHost& host) {
         asked(host);
         host.system().restoreLoyaltySystem();
     }},
    {"restores twice", "restore-over-data in restoreLoyaltySystem",
     [](WatchedHost& host) {
         asked(host);
         host.system().clearLoyaltyData();
         host.system().restoreLoyaltySystem();
         host.system().restoreLoyaltySystem();
     }},
    {"loses the plug-in data of a suspended check", "restore-without-state in restoreLoyaltySystem",
     [](WatchedHost& host) {
         const auto document = asked(host);
         host.system().clearLoyaltyData();
         document->setPluginData({});
         host.system().restoreLoyaltySystem();
     }},
};

} // namespace

const QList<BrokenHost>& brokenHosts()
{
    static const QList<BrokenHost> all = lifeOfTheObject + services + documents + effects + endings;
    return all;
}

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/counter.h"

#include "host/database/database.h"
#include "host/http/operationbudget.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "host/services/config.h"
#include "host/services/sessioncontext.h"
#include "till/desk/cashdesk.h"
#include "till/desk/credentials.h"
#include "till/desk/pluginhost.h"
#include "till/failure.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till::verify {

/// The host's queue, which remembers what was put into it last.
class Counter::KeepingBroker : public DBQueueBroker
{
public:
    explicit KeepingBroker(const QSharedPointer<poshost::Database>& opened) : DBQueueBroker(opened)
    {}

    bool addToQueue(const QString& queueName, const QVariantMap& message,
                    const QString& extra) override
    {
        last = message;
        return !stores || DBQueueBroker::addToQueue(queueName, message, extra);
    }

    QVariantMap last;
    bool stores = true;
};

Counter::Counter(Config& configuration, const QString& pluginFile, const QUrl& marked)
    : database(QSharedPointer<poshost::Database>::create(folder.filePath(u"verify.sqlite"_s))),
      store(database), broker(std::make_unique<KeepingBroker>(database)), transport(marked)
{
    session.setSessionContext(QSharedPointer<SessionContext>::create(u"verify"_s));
    Singleton<Config>::instance = &configuration;
    Singleton<Session>::instance = &session;
    Singleton<DBQueueBroker>::instance = broker.get();
    plugin = std::make_unique<PluginHost>(pluginFile);
    desk = std::make_unique<CashDesk>(plugin->loyaltySystem(), store, session);
    learnWays();
}

Counter::~Counter()
{
    desk.reset();
    plugin.reset();
    Singleton<DBQueueBroker>::instance = nullptr;
    Singleton<Session>::instance = nullptr;
    Singleton<Config>::instance = nullptr;
}

/// Lets the plug-in confirm an empty return, which goes no further than this: its message has all
/// three addresses and the headers, which only the plug-in knows.
void Counter::learnWays()
{
    broker->stores = false;
    confirmEmptyReturn(plugin->loyaltySystem());
    broker->stores = true;
    const QVariantMap urls = broker->last.value(u"urls"_s).toMap();
    known.precheck = QUrl(urls.value(u"0"_s).toString());
    known.paymentTry = QUrl(urls.value(u"1"_s).toString());
    known.confirm = QUrl(urls.value(u"2"_s).toString());
    const QVariantMap headers = broker->last.value(u"headers"_s).toMap();
    for (auto it = headers.cbegin(); it != headers.cend(); ++it) {
        known.headers.append({it.key().toUtf8(), it.value().toString().toUtf8()});
    }
    if (known.precheck.isEmpty() || known.paymentTry.isEmpty() || known.confirm.isEmpty()) {
        throw Failure(Text::tr("The plug-in does not say where its server is; look at the "
                               "configuration with \"orva-till doctor\"."));
    }
}

Papers Counter::sell(const Basket& basket)
{
    CheckFile file;
    file.card = basket.card;
    file.lines = basket.lines;
    desk->leave(); // what an earlier failure left open
    const poshost::OperationBudget operation;
    desk->openSale(file);
    if (desk->presentCard(basket.card) && desk->request() &&
        basket.points.kind != PointsChoice::Kind::None) {
        desk->choosePoints(basket.points);
    }
    return closeCheck();
}

Papers Counter::takeBack(const QString& saleId, const QHash<int, qint64>& thousandths)
{
    CheckFile file;
    file.type = CheckFile::Type::Return;
    file.sale = saleId;
    for (auto it = thousandths.cbegin(); it != thousandths.cend(); ++it) {
        Line line;
        line.position = it.key();
        line.returnedThousandths = it.value();
        file.lines.append(line);
    }
    std::sort(file.lines.begin(), file.lines.end(),
              [](const Line& left, const Line& right) { return left.position < right.position; });
    desk->leave(); // what an earlier failure left open
    const poshost::OperationBudget operation;
    desk->openReturn(file);
    desk->request();
    return closeCheck();
}

void Counter::listen()
{
    heard += transport.takeExchanges();
}

Papers Counter::closeCheck()
{
    Papers papers;
    broker->last.clear();
    listen();
    papers.precheck = heard.isEmpty() ? Exchange() : heard.last();
    papers.refusal = desk->current().refusal;
    papers.check = desk->close();
    desk->takeNotices();
    papers.confirmation = broker->last.value(u"payload"_s).toString().toUtf8();
    if (const auto message = store.messageOf(papers.check.id())) {
        poshost::OutgoingQueue(*database).park(*message);
    }
    return papers;
}

bool Counter::deliver(const Papers& papers)
{
    const auto message = store.messageOf(papers.check.id());
    if (!message) {
        return false;
    }
    poshost::OutgoingQueue queue(*database);
    queue.retry(*message);
    poshost::QueueDelivery(*database).deliverDue();
    listen();
    if (store.isDelivered(papers.check.id())) {
        return true;
    }
    queue.park(*message);
    return false;
}

void Counter::settle(const Papers& papers)
{
    if (const auto message = store.messageOf(papers.check.id())) {
        poshost::OutgoingQueue(*database).settle(*message);
    }
}

} // namespace till::verify

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/replayservices.h"

#include "host/core/basicexception.h"
#include "till/recording/valuejson.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace till {

class ReplayServices::RecordedConfig : public Config
{
public:
    explicit RecordedConfig(const QJsonObject& recorded) : values(recorded) {}

    QString getString(const QString& key, const QString& defaultValue) const override
    {
        return values.value(key).toString(defaultValue);
    }
    int getInt(const QString& key, int defaultValue) const override
    {
        return values.value(key).toInt(defaultValue);
    }

private:
    const QJsonObject values;
};

class ReplayServices::RecordedTransport : public RestClient
{
public:
    explicit RecordedTransport(ReplayFeed& source) : feed(source) {}

    void post(const QUrl&, const QByteArray&, const QHash<QString, QString>&) override
    {
        exchange = feed.nextExchange();
        if (exchange.isEmpty()) {
            exchange = {{u"error"_s, 1}}; // nobody answered what was not asked
        }
    }
    int getError() override { return exchange.value("error"_L1).toInt(); }
    int getHttpStatusCode() override { return exchange.value("status"_L1).toInt(); }
    tr::Tr getErrorText() override
    {
        const QJsonObject text = exchange.value("errorText"_L1).toObject();
        return {text.value("id"_L1).toString(), text.value("text"_L1).toString()};
    }
    QByteArray getResponse() override { return valuejson::toBytes(exchange.value("answer"_L1)); }
    void setTimeout(int) override {}
    QString getResponseHeader(const QString& name) override { return feed.responseHeader(name); }
    int getSendCount() override { return exchange.value("sendCount"_L1).toInt(); }

private:
    ReplayFeed& feed;
    QJsonObject exchange;
};

class ReplayServices::RecordedClock : public CurrentTime
{
public:
    explicit RecordedClock(ReplayFeed& source) : feed(source) {}

    QDateTime currentDateTime() override { return valuejson::toTime(feed.nextClock()); }

private:
    ReplayFeed& feed;
};

class ReplayServices::RecordedBroker : public DBQueueBroker
{
public:
    explicit RecordedBroker(ReplayFeed& source) : feed(source) {}

    bool addToQueue(const QString&, const QVariantMap&, const QString&) override
    {
        const QJsonObject thrown = feed.nextMessage().value("thrown"_L1).toObject();
        if (thrown.isEmpty()) {
            return true;
        }
        if (thrown.contains("what"_L1)) {
            throw std::runtime_error(thrown.value("what"_L1).toString().toStdString());
        }
        throw BasicException(
            tr::Tr(thrown.value("id"_L1).toString(), thrown.value("text"_L1).toString()));
    }

private:
    ReplayFeed& feed;
};

ReplayServices::ReplayServices(const Record& record)
    : config(std::make_unique<RecordedConfig>(record.config())),
      transport(std::make_unique<RecordedTransport>(feed)),
      clock(std::make_unique<RecordedClock>(feed)), broker(std::make_unique<RecordedBroker>(feed)),
      configBefore(Singleton<Config>::instance), sessionBefore(Singleton<Session>::instance),
      brokerBefore(Singleton<DBQueueBroker>::instance),
      transportBefore(MockFactory<RestClient>::mocked),
      clockBefore(MockFactory<CurrentTime>::mocked)
{
    session.setSessionContext(
        QSharedPointer<SessionContext>::create(record.header.value("session"_L1).toString()));
    Singleton<Config>::instance = config.get();
    Singleton<Session>::instance = &session;
    Singleton<DBQueueBroker>::instance = broker.get();
    MockFactory<RestClient>::mocked = transport.get();
    MockFactory<CurrentTime>::mocked = clock.get();
}

ReplayServices::~ReplayServices()
{
    MockFactory<CurrentTime>::mocked = clockBefore;
    MockFactory<RestClient>::mocked = transportBefore;
    Singleton<DBQueueBroker>::instance = brokerBefore;
    Singleton<Session>::instance = sessionBefore;
    Singleton<Config>::instance = configBefore;
}

} // namespace till

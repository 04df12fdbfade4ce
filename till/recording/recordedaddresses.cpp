// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordedaddresses.h"

#include "host/config/knownkeys.h"
#include "host/http/serveraddress.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// All texts in what a message lists its addresses in.
QJsonValue cleanedTexts(const QJsonValue& value)
{
    if (!value.isObject()) {
        return value.isString() ? QJsonValue(poshost::serveraddress::shown(value.toString()))
                                : value;
    }
    QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        it.value() = cleanedTexts(it.value());
    }
    return object;
}

QJsonObject cleanedEvent(QJsonObject event)
{
    if (event.contains("exchange"_L1)) {
        QJsonObject exchange = event.value("exchange"_L1).toObject();
        exchange.insert("url"_L1, cleanedTexts(exchange.value("url"_L1)));
        event.insert("exchange"_L1, exchange);
    }
    if (event.contains("queue"_L1)) {
        QJsonObject queued = event.value("queue"_L1).toObject();
        QJsonObject message = queued.value("message"_L1).toObject();
        if (message.contains("urls"_L1)) {
            message.insert("urls"_L1, cleanedTexts(message.value("urls"_L1)));
            queued.insert("message"_L1, message);
            event.insert("queue"_L1, queued);
        }
    }
    return event;
}

} // namespace

QJsonObject recordedaddresses::cleaned(const QJsonObject& line)
{
    QJsonObject result = line;
    if (line.contains("config"_L1)) {
        QJsonObject config = line.value("config"_L1).toObject();
        for (auto it = config.begin(); it != config.end(); ++it) {
            if (it.value().isString()) {
                it.value() = cleanValue(it.key(), it.value().toString());
            }
        }
        result.insert("config"_L1, config);
    }
    if (line.contains("events"_L1)) {
        QJsonArray events = line.value("events"_L1).toArray();
        for (qsizetype i = 0; i < events.size(); ++i) {
            events.replace(i, cleanedEvent(events.at(i).toObject()));
        }
        result.insert("events"_L1, events);
    }
    return result;
}

QString recordedaddresses::cleanValue(const QString& key, const QString& value)
{
    const auto known = poshost::knownkeys::find(key.section(u':', 0, 0), key.section(u':', 1));
    if (!known) { // nobody can say whether it is an address
        return value.contains("://"_L1) || value.contains(u'@')
                   ? poshost::serveraddress::shown(value)
                   : value;
    }
    switch (known->kind) {
    case poshost::ConfigKey::Kind::Address:
        return poshost::serveraddress::shown(value);
    case poshost::ConfigKey::Kind::Proxy:
        return poshost::serveraddress::shownProxy(value);
    default:
        return value;
    }
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/queuemessage.h"

#include "host/queue/contentdigest_p.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

const QString authorizationHeader = u"Authorization"_s;

QByteArray toJson(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

/// The number of the step that a key of "urls" names, -1 for none.
int stepNumber(const QString& key)
{
    bool isNumber = false;
    const int number = key.toInt(&isNumber);
    return isNumber && number >= 0 ? number : -1;
}

QJsonObject fromJson(const QByteArray& text)
{
    return QJsonDocument::fromJson(text).object();
}

} // namespace

QueueMessage QueueMessage::fromMap(const QVariantMap& message)
{
    QueueMessage result;
    result.payload = message.value(u"payload"_s).toString().toUtf8();

    QJsonObject headers;
    const QVariantMap givenHeaders = message.value(u"headers"_s).toMap();
    for (auto it = givenHeaders.cbegin(); it != givenHeaders.cend(); ++it) {
        if (it.key().compare(authorizationHeader, Qt::CaseInsensitive) == 0) {
            result.authorization = it->toString();
        } else {
            headers.insert(it.key(), it->toString());
        }
    }
    result.headers = toJson(headers);

    QJsonObject urls;
    const QVariantMap givenUrls = message.value(u"urls"_s).toMap();
    for (auto it = givenUrls.cbegin(); it != givenUrls.cend(); ++it) {
        urls.insert(it.key(), it->toString());
        result.steps += stepNumber(it.key()) >= 0 ? 1 : 0;
    }
    result.urls = toJson(urls);
    return result;
}

QByteArray QueueMessage::digest() const
{
    return contentdigest::of(*this);
}

bool QueueMessage::isTextObject(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonObject object = document.object();
    return document.isObject() && std::all_of(object.begin(), object.end(),
                                              [](const auto& value) { return value.isString(); });
}

QStringList QueueMessage::addressesOf(const QByteArray& urls)
{
    QMap<int, QString> byNumber;
    const QJsonObject object = fromJson(urls);
    for (auto it = object.begin(); it != object.end(); ++it) {
        const int number = stepNumber(it.key());
        if (number >= 0) {
            byNumber.insert(number, it->toString());
        }
    }
    return byNumber.values();
}

QHash<QString, QString> QueueMessage::headersOf(const QByteArray& headers,
                                                const QString& authorization)
{
    QHash<QString, QString> result;
    const QJsonObject object = fromJson(headers);
    for (auto it = object.begin(); it != object.end(); ++it) {
        result.insert(it.key(), it->toString());
    }
    if (!authorization.isEmpty()) {
        result.insert(authorizationHeader, authorization);
    }
    return result;
}

} // namespace poshost

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/deliveredaddresses.h"

#include "host/services/statement.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// Only what has nothing in it that could be a password: built of what is known to be host and
/// path.
QString withoutUser(const QString& address)
{
    const QUrl given(address);
    QUrl kept;
    kept.setScheme(given.scheme());
    kept.setHost(given.host());
    kept.setPort(given.port());
    kept.setPath(given.path(QUrl::FullyEncoded));
    const QString text = kept.toString(QUrl::FullyEncoded);
    const bool isAddress = given.isValid() && given.scheme().startsWith("http"_L1) &&
                           !given.host().isEmpty() && !text.contains(u'@');
    return isAddress ? text : u"***"_s;
}

/// @return null when no address names a user
QString storedWithUsers(Database& database, qint64 messageId)
{
    Statement row(database, u"SELECT urls FROM queue_bodies "
                            "WHERE message_id = ? AND instr(urls, '@') > 0"_s);
    return row.bind(messageId).next() ? row.value(0).toString() : QString();
}

} // namespace

void deliveredaddresses::eraseUsers(Database& database, qint64 messageId)
{
    const QString stored = storedWithUsers(database, messageId);
    if (stored.isNull()) {
        return;
    }
    QJsonObject addresses = QJsonDocument::fromJson(stored.toUtf8()).object();
    for (auto it = addresses.begin(); it != addresses.end(); ++it) {
        if (it->toString().contains(u'@')) {
            *it = withoutUser(it->toString());
        }
    }
    const QByteArray text = QJsonDocument(addresses).toJson(QJsonDocument::Compact);
    Statement update(database, u"UPDATE queue_bodies SET urls = ? WHERE message_id = ?"_s);
    update.bind(QString::fromUtf8(text)).bind(messageId).execute();
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/deliveredaddresses_p.h"

#include "host/database/statement.h"
#include "host/http/serveraddress.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

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
            *it = serveraddress::shown(it->toString());
        }
    }
    const QByteArray text = QJsonDocument(addresses).toJson(QJsonDocument::Compact);
    // what the digest was made of is gone, and nothing is sent any more that it could speak for
    Statement update(database,
                     u"UPDATE queue_bodies SET urls = ?, digest = NULL WHERE message_id = ?"_s);
    update.bind(QString::fromUtf8(text)).bind(messageId).execute();
}

} // namespace poshost

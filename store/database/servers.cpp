// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/database/servers.h"

#include "store/database/storeerror.h"

#include <QFile>
#include <libpq-fe.h>

#include <memory>

namespace orvastore {

using namespace Qt::StringLiterals;
using poshost::Message;

namespace {

constexpr qint64 longestPassword = 4096;

QMap<QByteArray, QByteArray> parsed(const QString& database)
{
    char* error = nullptr;
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(
        PQconninfoParse(database.toUtf8().constData(), &error), &PQconninfoFree);
    if (!options) {
        // the reason quotes the string, in which somebody may have written a password
        PQfreemem(error);
        throw StoreError(StoreError::Certainty::NothingSent, Message::of("store.string"));
    }
    QMap<QByteArray, QByteArray> given;
    for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
        if (option->val != nullptr) {
            given.insert(option->keyword, option->val);
        }
    }
    return given;
}

QByteArray passwordIn(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly) || file.size() > longestPassword) {
        throw StoreError(StoreError::Certainty::NothingSent,
                         Message::of("store.passwordFile", fileName, file.errorString()));
    }
    return file.readAll().split('\n').first();
}

/// What a session that waits for nobody needs: a peer that is gone is noticed within seconds.
void addDefaults(QMap<QByteArray, QByteArray>& options, const StoreSettings& settings)
{
    const QMap<QByteArray, QByteArray> defaults{
        {"keepalives_idle", "2"},    {"keepalives_interval", "1"},
        {"keepalives_count", "3"},   {"tcp_user_timeout", "4000"},
        {"client_encoding", "UTF8"}, {"fallback_application_name", settings.program.toUtf8()}};
    for (auto it = defaults.cbegin(); it != defaults.cend(); ++it) {
        if (!options.contains(it.key())) {
            options.insert(it.key(), it.value());
        }
    }
    // whether a server is the primary is asked below, with a sentence of its own
    options.remove("target_session_attrs");
    options.remove("connect_timeout");
}

QByteArray oneOf(const QList<QByteArray>& several, qsizetype index)
{
    return several.size() == 1 ? several.first() : several.value(index);
}

} // namespace

Servers Servers::of(const StoreSettings& settings)
{
    QMap<QByteArray, QByteArray> options = parsed(settings.database);
    addDefaults(options, settings);
    if (!settings.passwordFile.isEmpty()) {
        options.insert("password", passwordIn(settings.passwordFile));
    }
    QMap<QByteArray, QList<QByteArray>> lists;
    qsizetype count = 1;
    for (const QByteArray& key : {QByteArray("host"), QByteArray("hostaddr"), QByteArray("port")}) {
        if (options.contains(key)) {
            lists.insert(key, options.take(key).split(','));
            count = std::max(count, lists.value(key).size());
        }
    }
    Servers result;
    for (qsizetype i = 0; i < count; ++i) {
        Server server{options, {}};
        for (auto it = lists.cbegin(); it != lists.cend(); ++it) {
            server.options.insert(it.key(), oneOf(*it, i));
        }
        const QByteArray host = server.options.value("host", server.options.value("hostaddr"));
        const QByteArray port = server.options.value("port");
        server.name = QString::fromUtf8(port.isEmpty() ? host : host + QByteArray(":") + port);
        result.servers.append(server);
    }
    return result;
}

} // namespace orvastore

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/support/safeconfig.h"

#include "host/config/knownkeys.h"
#include "host/http/serveraddress.h"
#include "host/services/config.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// A text in the quotes of TOML, whose escapes are those of JSON.
QString inQuotes(const QString& text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.chopped(1).sliced(1));
}

QString safeValueOf(const Config& config, const poshost::ConfigKey& key)
{
    using Kind = poshost::ConfigKey::Kind;
    const QString text = config.getString(key.name(), QString());
    switch (key.kind) {
    case Kind::Secret:
        return inQuotes(u"***"_s);
    case Kind::Address:
        return inQuotes(poshost::serveraddress::shown(text));
    case Kind::Proxy:
        return inQuotes(poshost::serveraddress::shownProxy(text));
    case Kind::Number:
        return QString::number(config.getInt(key.name(), key.defaultValue.toInt()));
    case Kind::Text:
    case Kind::Path:
        return inQuotes(text);
    }
    return {};
}

} // namespace

QByteArray safeConfig(const Config& config)
{
    QString text;
    QString table;
    const QList<poshost::ConfigKey> keys = poshost::knownkeys::all();
    for (const poshost::ConfigKey& key : keys) {
        if (!config.contains(key.name())) {
            continue;
        }
        if (key.table != table) {
            table = key.table;
            text += (text.isEmpty() ? u"[%1]\n"_s : u"\n[%1]\n"_s).arg(table);
        }
        text += u"%1 = %2\n"_s.arg(key.key, safeValueOf(config, key));
    }
    return text.toUtf8();
}

} // namespace till

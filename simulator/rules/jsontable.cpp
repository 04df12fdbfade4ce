// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/jsontable.h"

#include "simulator/rules/configerror.h"
#include "simulator/text.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace simulator {
namespace {

/// Apart, because lupdate does not know the context within a function that returns a foreign type.
[[noreturn]] void failToParse(const QByteArray& text, const QJsonParseError& error,
                              const QString& name)
{
    const qsizetype place = std::clamp<qsizetype>(error.offset, 0, text.size());
    throw ConfigError(Text::tr("%1:%2: this is not JSON: %3")
                          .arg(name)
                          .arg(text.first(place).count('\n') + 1)
                          .arg(error.errorString()));
}

[[noreturn]] void refuseOther(const QString& name)
{
    throw ConfigError(Text::tr("%1: this is not a JSON object").arg(name));
}

/// JSON knows one kind of numbers: what is whole is taken for a whole number.
void insertNumber(toml::table& table, const std::string& key, const QJsonValue& value)
{
    constexpr double exact = 9007199254740992; // all whole numbers up to here are doubles
    const QVariant number = value.toVariant();
    const double real = number.toDouble();
    const bool isWhole = number.typeId() == QMetaType::LongLong ||
                         (std::abs(real) <= exact && std::trunc(real) == real);
    if (isWhole) {
        table.insert(key, static_cast<int64_t>(number.toLongLong()));
    } else {
        table.insert(key, real);
    }
}

} // namespace

toml::table parseJson(const QByteArray& text, const QString& name)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        failToParse(text, error, name);
    }
    if (!document.isObject()) {
        refuseOther(name);
    }
    toml::table table;
    const QJsonObject object = document.object();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const std::string key = entry.key().toStdString();
        switch (entry.value().type()) {
        case QJsonValue::String:
            table.insert(key, entry.value().toString().toStdString());
            break;
        case QJsonValue::Double:
            insertNumber(table, key, entry.value());
            break;
        case QJsonValue::Bool:
            table.insert(key, entry.value().toBool());
            break;
        default:
            table.insert(key, toml::array());
        }
    }
    return table;
}

} // namespace simulator

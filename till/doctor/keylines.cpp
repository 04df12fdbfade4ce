// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/keylines.h"

#include "host/config/knownkeys.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

/// A sheet's unit, and the sentence about so many of it.
struct Unit
{
    const char* name;
    const char* sentence;
};

constexpr Unit units[] = {{"seconds", QT_TRANSLATE_NOOP("Till", "not set: %1 seconds")},
                          {"days", QT_TRANSLATE_NOOP("Till", "not set: %1 days")},
                          {"megabytes", QT_TRANSLATE_NOOP("Till", "not set: %1 megabytes")},
                          {"bytes", QT_TRANSLATE_NOOP("Till", "not set: %1 bytes")},
                          {"at a time", QT_TRANSLATE_NOOP("Till", "not set: %1 at a time")}};

/// What the sheets of host and till say to hold without a key.
constexpr const char* meanings[] = {
    QT_TRANSLATE_NOOP("Till", "not set: no proxy"),
    QT_TRANSLATE_NOOP("Till", "not set: the system's certificates"),
    QT_TRANSLATE_NOOP("Till", "not set: no store, the till delivers itself"),
    QT_TRANSLATE_NOOP("Till", "not set: no password"),
    QT_TRANSLATE_NOOP("Till", "not set: the shop without a name"),
    QT_TRANSLATE_NOOP("Till", "not set: the one of the package orva-store"),
    QT_TRANSLATE_NOOP("Till", "not set: messages wait for the store"),
    QT_TRANSLATE_NOOP("Till", "not set: nothing is recorded"),
    QT_TRANSLATE_NOOP("Till", "not set: they are not written"),
    QT_TRANSLATE_NOOP("Till", "not set: no server is tried"),
    QT_TRANSLATE_NOOP("Till", "not set: what needs one is not tried"),
};

QString withDefault(const poshost::ConfigKey& key)
{
    const QString value = key.defaultValue.toString();
    for (const Unit& unit : units) {
        if (key.unit == QLatin1StringView(unit.name)) {
            return Text::tr(unit.sentence).arg(value);
        }
    }
    return Text::tr("not set: %1").arg(key.unit.isEmpty() ? value : value + u' ' + key.unit);
}

} // namespace

QString keylines::idOf(const poshost::ConfigKey& key)
{
    return u"config.%1.%2"_s.arg(key.table, key.key);
}

bool keylines::isHere(const QString& host)
{
    return host == "localhost"_L1 || host.startsWith("127."_L1) || host == "::1"_L1;
}

QStringList keylines::needed(poshost::ConfigKey::Use use)
{
    const auto key = poshost::knownkeys::find(use);
    return {key ? idOf(*key) : u"config.till.plugin"_s};
}

QString keylines::nobodyKnows()
{
    return Text::tr("no key sheet beside the plug-in says which key this is");
}

QString keylines::notSet(const poshost::ConfigKey& key)
{
    if (key.defaultValue.isValid()) {
        return withDefault(key);
    }
    for (const char* const meaning : meanings) {
        if (QLatin1StringView(meaning) == u"not set: "_s + key.without) {
            return Text::tr(meaning);
        }
    }
    return key.without.isEmpty() ? Text::tr("not set") : Text::tr("not set: %1").arg(key.without);
}

} // namespace till::doctor

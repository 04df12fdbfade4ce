// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/knownkeys.h"

#include <QList>
#include <algorithm>
#include <numeric>
#include <vector>

namespace poshost {

using namespace Qt::StringLiterals;

namespace knownkeys {

namespace {

const QList<KnownKey>& all()
{
    using Kind = KnownKey::Kind;
    static const QList<KnownKey> keys{
        {u"Orva"_s, u"serverUrl"_s, Kind::Address},
        {u"Orva"_s, u"merchantId"_s},
        {u"Orva"_s, u"pos"_s},
        {u"Orva"_s, u"timeout"_s, Kind::Number},
        {u"Orva"_s, u"user"_s},
        {u"Orva"_s, u"password"_s, Kind::Secret},
        {u"Orva"_s, u"apikey"_s, Kind::Secret},
        {u"http"_s, u"proxy"_s, Kind::Proxy},
        {u"http"_s, u"caFile"_s, Kind::Path},
        {u"http"_s, u"maxAnswerBytes"_s, Kind::Number, 1},
        {u"till"_s, u"database"_s, Kind::Path},
        {u"till"_s, u"plugin"_s, Kind::Path},
        {u"till"_s, u"name"_s},
        {u"queue"_s, u"keepDeliveredDays"_s, Kind::Number, 0},
        {u"recording"_s, u"folder"_s, Kind::Path},
        {u"recording"_s, u"maxMegabytes"_s, Kind::Number, 1},
        {u"recording"_s, u"maxDays"_s, Kind::Number, 1},
    };
    return keys;
}

/// Levenshtein's distance, row by row.
int distance(const QString& left, const QString& right)
{
    std::vector<int> row(static_cast<size_t>(right.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < left.size(); ++i) {
        int diagonal = row[0]++;
        for (qsizetype j = 0; j < right.size(); ++j) {
            const auto at = static_cast<size_t>(j);
            const int changed = diagonal + (left[i] == right[j] ? 0 : 1);
            diagonal = row[at + 1];
            row[at + 1] = std::min({changed, row[at] + 1, row[at + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::optional<KnownKey> find(const QString& table, const QString& key)
{
    for (const KnownKey& known : all()) {
        if (known.table == table && known.key == key) {
            return known;
        }
    }
    return std::nullopt;
}

QStringList tables()
{
    QStringList names;
    for (const KnownKey& known : all()) {
        names.append(known.table);
    }
    names.removeDuplicates();
    return names;
}

QStringList keysOf(const QString& table)
{
    QStringList names;
    for (const KnownKey& known : all()) {
        if (known.table == table) {
            names.append(known.key);
        }
    }
    return names;
}

QString nearest(const QString& name, const QStringList& candidates)
{
    const QString wanted = name.toLower();
    const auto best = std::min_element(
        candidates.begin(), candidates.end(), [&wanted](const QString& left, const QString& right) {
            return distance(wanted, left.toLower()) < distance(wanted, right.toLower());
        });
    return best == candidates.end() ? QString() : *best;
}

} // namespace knownkeys

} // namespace poshost

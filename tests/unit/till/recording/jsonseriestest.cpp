// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/jsonseries.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "till/recording/valuejson.h"

#include <QJsonArray>
#include <QTimeZone>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace till;

namespace {

const QDateTime atNoon(QDate(2026, 3, 5), QTime(12, 0));

/// Each beside the first one: another value, another type of the same value, other keys, none.
const QList<QVariantMap> variedMaps{
    {{u"a"_s, 1}, {u"b"_s, u"x"_s}},
    {{u"a"_s, 1}, {u"b"_s, u"x"_s}},
    {{u"a"_s, 2}, {u"b"_s, u"x"_s}},
    {{u"a"_s, 1.0}, {u"b"_s, u"x"_s}},
    {{u"a"_s, 0.0}, {u"b"_s, u"1"_s}},
    {{u"a"_s, -0.0}, {u"b"_s, 1}},
    {{u"a"_s, 1}},
    {{u"b"_s, u"x"_s}},
    {},
    {{u"a"_s, 1}, {u"c"_s, u"x"_s}},
    {{u"a"_s, 1}, {u"b"_s, u"x"_s}, {u"c"_s, true}},
    {{u"a"_s, atNoon}, {u"b"_s, QDateTime(atNoon.date(), atNoon.time(), QTimeZone::utc())}},
    {{u"a"_s, QVariantList{1}}, {u"b"_s, QVariantMap{{u"a"_s, 1}}}},
    {{u"a"_s, QVariant()}, {u"b"_s, QString()}},
};

QSharedPointer<DocumentImpact> impactOf(bool isBonus, double sum, int position)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setDiscountName(u"a name"_s);
    detail->setDiscountSum(sum);
    detail->setPosition(position);
    const auto impact =
        isBonus ? QSharedPointer<DocumentImpact>(QSharedPointer<BonusImpact>::create(detail))
                : QSharedPointer<DiscountImpact>::create(detail);
    impact->addDetailForPosition(position, sum);
    return impact;
}

template <typename Entry>
QJsonObject alone(const Entry& entry)
{
    fieldjson::JsonFields fields;
    recordedfields::of(entry, fields);
    return fields.object;
}

} // namespace

TEST(JsonSeries, everyMapIsAsItIsAloneWhicheverCameFirst)
{
    for (const QVariantMap& first : variedMaps) {
        QVariantList list{first};
        for (const QVariantMap& map : variedMaps) {
            list.append(map);
        }
        const QJsonArray array = valuejson::ofVariant(list).toArray();
        ASSERT_EQ(array.size(), list.size());
        for (qsizetype i = 0; i < list.size(); ++i) {
            EXPECT_EQ(array.at(i), valuejson::ofVariant(list.at(i))) << i;
        }
    }
}

TEST(JsonSeries, everyImpactIsAsItIsAlone)
{
    JsonSeries series;
    for (const bool isBonus : {false, true, false}) {
        for (const double sum : {1.5, 1.5, 0.0, -0.0, 1e-300}) {
            for (const int position : {1, 2, 2}) {
                const auto impact = impactOf(isBonus, sum, position);
                EXPECT_EQ(series.of(*impact), alone(*impact)) << isBonus << sum << position;
            }
        }
    }
}

TEST(JsonSeries, everyBonusRecordIsAsItIsAlone)
{
    JsonSeries series;
    DocumentBonusRecord record;
    record.cardNumber = u"7700000000017"_s;
    record.dateTime = atNoon;
    const auto expectAsAlone = [&] { EXPECT_EQ(series.of(record), alone(record)); };
    expectAsAlone();
    record.position = 7;
    expectAsAlone();
    record.bonusAmount = 0.1;
    record.accrual = true;
    expectAsAlone();
    record.dateTime = atNoon.addMSecs(1);
    record.sessionContext = u"another"_s;
    expectAsAlone();
    record.valutCode = 1200;
    record.cardNumber.clear();
    expectAsAlone();
    EXPECT_EQ(alone(record).size(), 7);
}

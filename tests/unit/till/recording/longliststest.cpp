// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/longlists.h"

#include "host/document/discountimpact.h"
#include "till/recording/valuejson.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace till;

namespace {

/// As a list is written that is short.
QJsonValue writtenWhole(const QVariantList& list)
{
    QJsonArray array;
    for (const QVariant& entry : list) {
        array.append(valuejson::ofVariant(entry));
    }
    return array;
}

/// Differ from the first in a value, in its type, in which fields there are, and in nothing.
QVariantList manyMaps()
{
    const QVariantMap first{{u"position"_s, 1}, {u"name"_s, u"x"_s}, {u"series"_s, true}};
    QVariantList list;
    for (int i = 0; i < 5; ++i) {
        list.append(first);
        QVariantMap other = first;
        other.insert(u"position"_s, i);
        list.append(other);
        other.insert(u"name"_s, QVariantList{1, u"y"_s});
        list.append(other);
        other.remove(u"series"_s);
        list.append(other);
        list.append(QVariantMap{{u"another"_s, -0.0}});
    }
    return list;
}

QJsonObject putBack(QJsonObject line)
{
    longlists::putBack(line);
    return line;
}

QJsonObject documentLine(const QJsonValue& value)
{
    return {
        {u"document"_s, 0},
        {u"content"_s, QJsonObject{{u"pluginData"_s,
                                    QJsonObject{{u"owner"_s, QJsonObject{{u"key"_s, value}}}}}}}};
}

QSharedPointer<DocumentImpact> impactOn(int position)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setPosition(position);
    detail->setDiscountSum(position % 3);
    return QSharedPointer<DiscountImpact>::create(detail);
}

} // namespace

TEST(LongLists, ofAPluginComeBackAsTheyWere)
{
    const QVariantList list = manyMaps();
    ASSERT_GE(list.size(), longlists::leastEntries);
    const QJsonValue written = valuejson::ofVariant(list);
    ASSERT_TRUE(written.isObject()) << "a long list of maps was written whole";
    EXPECT_EQ(putBack(documentLine(written)), documentLine(writtenWhole(list)));
    EXPECT_EQ(valuejson::toVariant(writtenWhole(list)), QVariant(list));
}

TEST(LongLists, withinOneAnotherComeBackAsTheyWere)
{
    const QVariantMap inner{{u"lines"_s, manyMaps()}};
    QVariantList outer;
    for (qsizetype i = 0; i < longlists::leastEntries; ++i) {
        QVariantMap map{{u"number"_s, int(i)}, {u"inner"_s, i % 2 == 0 ? inner : QVariantMap()}};
        outer.append(map);
    }
    const QVariantMap value{{u"all"_s, outer}, {u"none"_s, QVariantList()}};
    const QJsonObject line = putBack(documentLine(valuejson::ofVariant(value)));
    const QJsonValue back = line.value("content"_L1)["pluginData"_L1]["owner"_L1]["key"_L1];
    EXPECT_EQ(valuejson::toVariant(back), QVariant(value));
}

TEST(LongLists, thatAreShortOrMixedAreWrittenWhole)
{
    const QVariantList few = manyMaps().first(longlists::leastEntries - 1);
    EXPECT_EQ(valuejson::ofVariant(few), writtenWhole(few));
    const QVariantList mixed = manyMaps() << 1;
    EXPECT_EQ(valuejson::ofVariant(mixed), writtenWhole(mixed));
}

TEST(LongLists, ofResultsAndPartsOfDocumentsComeBackAsTheyWere)
{
    QList<QSharedPointer<DocumentImpact>> impacts;
    QJsonArray whole;
    for (int position = 1; position <= 20; ++position) {
        impacts.append(impactOn(position));
        fieldjson::JsonFields fields;
        recordedfields::of(*impacts.last(), fields);
        whole.append(fields.object);
    }
    const QJsonValue written = longlists::of(
        impacts, [](const auto& impact) -> const auto& { return *impact; });
    ASSERT_TRUE(written.isObject());
    EXPECT_EQ(putBack({{u"result"_s, written}}), (QJsonObject{{u"result"_s, whole}}));
    for (const QString& part : {u"content"_s, u"changed"_s}) {
        for (const QString& list : {u"goods"_s, u"impacts"_s}) {
            EXPECT_EQ(putBack({{part, QJsonObject{{list, written}}}}),
                      (QJsonObject{{part, QJsonObject{{list, whole}}}}));
        }
    }
}

TEST(LongLists, ofQueuedMessagesComeBackAsTheyWere)
{
    const QVariantList list = manyMaps();
    const auto line = [](const QJsonValue& value) {
        const QJsonObject queued{{u"message"_s, QJsonObject{{u"parts"_s, value}}}};
        return QJsonObject{{u"events"_s, QJsonArray{QJsonObject{{u"queue"_s, queued}}}}};
    };
    EXPECT_EQ(putBack(line(valuejson::ofVariant(list))), line(writtenWhole(list)));
}

TEST(LongLists, areShorterByMostOfWhatIsAlike)
{
    QVariantList list;
    for (int i = 0; i < 1000; ++i) {
        list.append(QVariantMap{{u"card"_s, u"2200000000017"_s},
                                {u"position"_s, i},
                                {u"name"_s, u"a name of thirty characters ..."_s}});
    }
    const auto sizeOf = [](const QJsonValue& value) {
        return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).size();
    };
    EXPECT_LT(sizeOf(valuejson::ofVariant(list)) * 3, sizeOf(writtenWhole(list)));
}

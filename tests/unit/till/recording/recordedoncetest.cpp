// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a record holds once although it comes again and again: long texts, equal readings of the
// clock, and a document in which nothing has changed.

#include "host/document/discountimpact.h"
#include "host/document/document.h"
#include "host/document/money.h"
#include "host/services/currenttime.h"
#include "tests/support/mocked.h"
#include "till/recording/memorytarget.h"
#include "till/recording/recordeddocument.h"
#include "till/recording/recorder.h"
#include "till/recording/recordingclock.h"
#include "till/recording/replayfeed.h"
#include "till/recording/valuejson.h"

#include <gtest/gtest.h>

#include <QTimeZone>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using till::Record;
using till::RecordedEvents;

namespace {

/// Lines as they would stand in a file.
class LinesTarget : public till::RecordTarget
{
public:
    void begin(QJsonObject header) override { add(header); }
    void add(const QJsonObject& line) override { content += Record::lineOf(line); }

    QByteArray content;
};

class SetClock : public CurrentTime
{
public:
    SetClock() : registration(*this) {}
    QDateTime currentDateTime() override { return time; }

    QDateTime time{{2024, 3, 5}, {14, 20, 31, 250}};

private:
    tests::Registered<CurrentTime> registration;
};

const QString longText = QString(100'000, u'ю') + u"Анна"_s;

QJsonObject exchangeOf(till::Recorder& recorder, const QString& answer)
{
    return {{u"exchange"_s,
             QJsonObject{{u"request"_s, u"<a/>"_s}, {u"answer"_s, recorder.ofVariant(answer)}}}};
}

QJsonObject eventOf(const QJsonObject& call, int index)
{
    return call.value(u"events"_s).toArray().at(index).toObject();
}

QString answerIn(const QJsonObject& call)
{
    return eventOf(call, 0).value(u"exchange"_s).toObject().value(u"answer"_s).toString();
}

QJsonObject changesOf(till::RecordedDocument& recorded, const Document& document)
{
    return recorded.changes(
        document, [](const QVariant& value) { return till::valuejson::ofVariant(value); });
}

struct Changeable
{
    Changeable()
    {
        document->setGoodsItems({item});
        document->addCardRecord(card);
        detail->setCardRecord(card);
        impact = QSharedPointer<DiscountImpact>::create(detail);
        document->addImpact(impact);
    }

    QSharedPointer<Document> document = QSharedPointer<Document>::create();
    QSharedPointer<GoodsItem> item = QSharedPointer<GoodsItem>::create();
    QSharedPointer<DocumentCardRecord> card = QSharedPointer<DocumentCardRecord>::create(
        QSharedPointer<Card>::create(u"2200000000017"_s), 15, 1);
    QSharedPointer<DocumentImpactDetail> detail = QSharedPointer<DocumentImpactDetail>::create();
    QSharedPointer<DocumentImpact> impact;
};

using Change = void (*)(Changeable&);

} // namespace

TEST(RecordedOnce, ALongTextStandsInTheFileOnceAndIsReadInEachOfItsPlaces)
{
    LinesTarget target;
    till::Recorder recorder(target, {});
    const auto document = QSharedPointer<Document>::create();
    for (int i = 0; i < 2; ++i) {
        recorder.begin(u"request"_s, {document, {}, {}});
        recorder.note([&] { return exchangeOf(recorder, longText); });
        document->setPluginValue(u"Orva"_s, u"lastResponse"_s, longText);
        document->setPluginValue(u"Orva"_s, u"text"_s, 5.0 + i);
        recorder.end([] { return true; });
    }
    const auto other = QSharedPointer<Document>::create();
    recorder.begin(u"request"_s, {other, {}, {}});
    recorder.note([&] { return exchangeOf(recorder, longText); });
    recorder.end([] { return true; });

    EXPECT_EQ(target.content.count("Анна"), 2) << "once in each record";
    const QList<Record> records = Record::parse(target.content, u"lines"_s);
    ASSERT_EQ(records.size(), 2);
    ASSERT_EQ(records.first().calls.size(), 2);
    EXPECT_EQ(answerIn(records.first().calls.first()), longText);
    EXPECT_EQ(answerIn(records.first().calls.last()), longText);
    EXPECT_EQ(answerIn(records.last().calls.first()), longText);
    const QJsonObject data = records.first().documents.last().value(u"pluginData"_s).toObject();
    EXPECT_EQ(data.value(u"Orva"_s).toObject().value(u"lastResponse"_s).toString(), longText);
    EXPECT_EQ(data.value(u"Orva"_s).toObject().value(u"text"_s).toObject(),
              (QJsonObject{{u"double"_s, 6}}));
}

TEST(RecordedOnce, WhatAPlugInKeepsIsWrittenAgainOnlyWhereItIsAnother)
{
    const auto listOf = [](double amount) {
        return QVariantList{QVariantMap{{u"bonusAmount"_s, 1.0}},
                            QVariantMap{{u"bonusAmount"_s, amount}}};
    };
    till::RecordedDocument recorded;
    Document document;
    document.setPluginValue(u"Orva"_s, u"bonusRecords"_s, listOf(0.0));
    document.setPluginValue(u"Orva"_s, u"lastResponse"_s, u"<a/>"_s);
    EXPECT_FALSE(changesOf(recorded, document).isEmpty());
    document.setPluginValue(u"Orva"_s, u"bonusRecords"_s, listOf(0.0));
    EXPECT_TRUE(changesOf(recorded, document).isEmpty());
    document.setPluginValue(u"Orva"_s, u"bonusRecords"_s, listOf(-0.0));
    const QJsonObject changed = changesOf(recorded, document).value(u"pluginData"_s).toObject();
    EXPECT_EQ(changed.value(u"Orva"_s).toObject(),
              (QJsonObject{{u"bonusRecords"_s, till::valuejson::ofVariant(listOf(-0.0)).toArray()},
                           {u"lastResponse"_s, u"<a/>"_s}}));
    EXPECT_TRUE(changesOf(recorded, document).isEmpty());
    document.setPluginValue(u"Other"_s, u"text"_s, u"a"_s);
    EXPECT_EQ(changesOf(recorded, document).value(u"pluginData"_s).toObject().size(), 2);
}

TEST(RecordedOnce, AnotherLongTextOfTheSameLengthIsItsOwn)
{
    LinesTarget target;
    till::Recorder recorder(target, {});
    recorder.begin(u"request"_s, {QSharedPointer<Document>::create(), {}, {}});
    const QString other = longText.chopped(1) + u'я';
    recorder.note([&] { return exchangeOf(recorder, longText); });
    recorder.note([&] { return exchangeOf(recorder, other); });
    recorder.end([] { return true; });
    const QJsonObject call = Record::parse(target.content, u"lines"_s).first().calls.first();
    EXPECT_EQ(eventOf(call, 1).value(u"exchange"_s).toObject().value(u"answer"_s), other);
}

TEST(RecordedOnce, AnIndexWithoutItsTextIsNoLineOfARecord)
{
    Record record;
    const QJsonObject answer{{u"answer"_s, QJsonObject{{u"text"_s, 0}}}};
    const QJsonObject call{{u"call"_s, u"request"_s},
                           {u"events"_s, QJsonArray{QJsonObject{{u"exchange"_s, answer}}}}};
    EXPECT_FALSE(record.add(call).isEmpty());
    EXPECT_FALSE(record.add({{u"text"_s, 1}, {u"content"_s, u"a"_s}}).isEmpty());
    EXPECT_TRUE(record.add({{u"text"_s, 0}, {u"content"_s, u"a"_s}}).isEmpty());
    EXPECT_TRUE(record.add(call).isEmpty());
    EXPECT_EQ(answerIn(record.calls.last()), u"a"_s);
}

TEST(RecordedOnce, EqualReadingsAreOneEventAndAReplayHandsAllOfThemOut)
{
    SetClock set;
    till::MemoryTarget target;
    till::Recorder recorder(target, {});
    till::RecordingClock clock(recorder);
    recorder.begin(u"request"_s, {QSharedPointer<Document>::create(), {}, {}});
    const auto read = [&](int times) {
        for (int i = 0; i < times; ++i) {
            EXPECT_EQ(MockFactory<CurrentTime>::create()->currentDateTime(), set.time);
        }
    };
    read(3);
    recorder.note([] { return QJsonObject{{u"transport"_s, u"getError"_s}}; });
    read(2);
    set.time = set.time.addMSecs(1);
    read(1);
    set.time = QDateTime(set.time.date(), set.time.time(), Qt::UTC);
    read(1);
    recorder.end([] { return true; });

    const QJsonArray events = target.records().first().calls.first().value(u"events"_s).toArray();
    QList<int> times;
    for (const auto& event : events) {
        times.append(RecordedEvents::timesOf(event.toObject()));
    }
    EXPECT_EQ(times, (QList<int>{3, 1, 2, 1, 1}));
    till::ReplayFeed feed;
    feed.begin(events);
    QStringList readings;
    for (int i = 0; i < 8; ++i) {
        readings.append(feed.nextClock().sliced(17));
    }
    EXPECT_EQ(readings.join(u' '), u"31.250 31.250 31.250 31.250 31.250 31.251 31.251Z 31.251Z"_s);
}

TEST(RecordedOnce, ReadingsOfAnEarlierVersionAreReadAsThoseOfThisOne)
{
    const QJsonObject reading{{u"clock"_s, u"2024-03-05T14:20:31.250"_s}};
    const QJsonObject later{{u"clock"_s, u"2024-03-05T14:20:31.251"_s}};
    const QJsonObject post{{u"transport"_s, u"getError"_s}};
    Record record;
    record.add({{u"call"_s, u"request"_s},
                {u"events"_s, QJsonArray{reading, reading, later, post, later, later}}});
    QJsonObject twice = reading;
    twice.insert(u"times"_s, 2);
    QJsonObject laterTwice = later;
    laterTwice.insert(u"times"_s, 2);
    EXPECT_EQ(record.calls.first().value(u"events"_s).toArray(),
              (QJsonArray{twice, later, post, laterTwice}));
}

TEST(RecordedOnce, EveryChangeOfADocumentIsWrittenAndNothingElse)
{
    const std::vector<std::pair<const char*, Change>> changes{
        {"number", [](Changeable& c) { c.document->setCheckNumber(7); }},
        {"payment", [](Changeable& c) { c.document->setPaymentKopecks(1); }},
        {"goods", [](Changeable& c) { c.item->setPosnum(7); }},
        {"goods", [](Changeable& c) { c.item->setCode(u"7"_s); }},
        {"goods", [](Changeable& c) { c.item->setName(u"7"_s); }},
        {"goods", [](Changeable& c) { c.item->setQuantity(7); }},
        {"goods", [](Changeable& c) { c.item->setQuantBack(7); }},
        {"goods", [](Changeable& c) { c.item->setQuantBack(7.0); }},
        {"goods", [](Changeable& c) { c.item->setQuantBack(u"7"_s); }},
        {"goods", [](Changeable& c) { c.item->setQuantBack(QVariantList{7}); }},
        {"goods", [](Changeable& c) { c.item->setPrice(-0.0); }},
        {"goods", [](Changeable& c) { c.item->setMinPrice(7); }},
        {"goods", [](Changeable& c) { c.item->setSumb(7); }},
        {"goods", [](Changeable& c) { c.item->setBonusImpactSum(7); }},
        {"goods", [](Changeable& c) { c.item->setTmcUnit(TmcUnit(u"kg"_s, true)); }},
        {"cards", [](Changeable& c) { c.card->setPointsForSpend(7); }},
        {"cards", [](Changeable& c) { c.card->setPointsForEarn(7); }},
        {"cards", [](Changeable& c) { c.card->setBonusBalance(7); }},
        {"cards",
         [](Changeable& c) { c.card->getCard()->setClient(QSharedPointer<Client>::create()); }},
        {"cards", [](Changeable& c) { c.card->getCard()->getClient()->setName(u"A"_s); }},
        {"impacts", [](Changeable& c) { c.detail->setCardIndex(7); }},
        {"impacts",
         [](Changeable& c) {
             c.detail->setDateTime({{2024, 3, 5}, {14, 20}});
         }},
        {"impacts",
         [](Changeable& c) {
             c.detail->setDateTime({{2024, 3, 5}, {14, 20}, Qt::UTC});
         }},
        {"impacts", [](Changeable& c) { c.detail->setDiscountType(EDiscountType::BonusPayment); }},
        {"impacts", [](Changeable& c) { c.detail->setDiscountName(u"7"_s); }},
        {"impacts", [](Changeable& c) { c.detail->setPosition(7); }},
        {"impacts", [](Changeable& c) { c.detail->setDiscountRate(7.0); }},
        {"impacts", [](Changeable& c) { c.detail->setDiscountSum(7); }},
        {"impacts", [](Changeable& c) { c.detail->setMinPriceIgnored(true); }},
        {"impacts", [](Changeable& c) { c.detail->setCardRecord({}); }},
        {"impacts", [](Changeable& c) { c.impact->addDetailForPosition(7, 1); }},
        {"impacts", [](Changeable& c) { c.document->addImpact(c.impact); }},
        {"pluginData", [](Changeable& c) { c.document->setPluginValue(u"a"_s, u"b"_s, 7); }},
        {"pluginData", [](Changeable& c) { c.document->setPluginValue(u"a"_s, u"c"_s, 7); }},
        {"pluginData", [](Changeable& c) { c.document->setPluginValue(u"a"_s, u"c"_s, 7.0); }}};
    Changeable present;
    till::RecordedDocument recorded;
    EXPECT_EQ(changesOf(recorded, *present.document).size(), 10) << "the first time all fields";
    int index = 0;
    for (const auto& [field, change] : changes) {
        EXPECT_EQ(changesOf(recorded, *present.document), QJsonObject()) << index;
        change(present);
        EXPECT_TRUE(changesOf(recorded, *present.document).contains(QLatin1StringView(field)))
            << field << ", change " << index;
        ++index;
    }
}

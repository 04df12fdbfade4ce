// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Documents that declare another encoding than UTF-8 in records: an answer is in it, a queued
// message only says so.

#include "till/recording/logview.h"
#include "till/recording/recordcomparison.h"
#include "till/recording/valuejson.h"

#include <QJsonArray>
#include <QStringEncoder>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using till::Record;

namespace {

const QString card = u"2200000000017"_s;

QString document(const QString& sum)
{
    return u"<?xml version='1.0' encoding='UTF-16'?>\n<RawCheck>\n<name>Анна</name>\n"
           "<cardNumber>%1</cardNumber><total>%2</total></RawCheck>"_s.arg(card, sum);
}

QJsonObject exchange(const QString& answer)
{
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    const QByteArray bytes = encoder(answer);
    return {{u"exchange"_s, QJsonObject{{u"url"_s, u"http://server.test/precheck"_s},
                                        {u"status"_s, 200},
                                        {u"request"_s, u"<RawCheck/>"_s},
                                        {u"answer"_s, till::valuejson::ofBytes(bytes)}}}};
}

QJsonObject queued(const QString& payload)
{
    return {{u"queue"_s, QJsonObject{{u"name"_s, u"orva"_s},
                                     {u"message"_s, QJsonObject{{u"payload"_s, payload}}}}}};
}

Record recordOf(const QJsonObject& event)
{
    Record record;
    record.documents = {{{u"cards"_s, QJsonArray{QJsonObject{{u"number"_s, card}}}}}};
    record.calls = {{{u"call"_s, u"commit"_s}, {u"events"_s, QJsonArray{event}}}};
    return record;
}

void expectReadable(const QString& shown)
{
    EXPECT_TRUE(shown.contains(u"<name>Анна</name>"_s)) << shown.toStdString();
    EXPECT_TRUE(shown.contains(u"0017"_s)) << shown.toStdString();
    EXPECT_FALSE(shown.contains(card)) << shown.toStdString();
}

} // namespace

TEST(EncodedRecord, showsAnAnswerInItsEncodingAndHidesTheCard)
{
    expectReadable(till::logview::text(recordOf(exchange(document(u"1.00"_s))), 0));
}

TEST(EncodedRecord, showsAMessageAsTheTextThatItIs)
{
    expectReadable(till::logview::text(recordOf(queued(document(u"1.00"_s))), 0));
}

TEST(EncodedRecord, namesTheElementInWhichMessagesDiffer)
{
    const Record recorded = recordOf(queued(document(u"1.00"_s)));
    const Record replayed = recordOf(queued(document(u"2.00"_s)));
    const auto differences = till::recordcomparison::differences(recorded, {replayed});
    ASSERT_EQ(differences.size(), 1);
    EXPECT_TRUE(differences.first().path.endsWith(u" /RawCheck/total"_s))
        << differences.first().path.toStdString();
    EXPECT_EQ(differences.first().line, 4);
    EXPECT_EQ(differences.first().recorded, u"\"1.00\""_s);
    EXPECT_EQ(differences.first().replayed, u"\"2.00\""_s);
}

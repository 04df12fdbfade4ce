// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/subject.h"

#include "host/core/basicexception.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addQueuePromises() {}

namespace contract {
namespace {

const QString queueName = u"orva"_s;
const QString tryAddress = u"http://127.0.0.1:9/api/1.x/paymenttry"_s;
const QString confirmAddress = u"http://127.0.0.1:9/a%20b/api/1.x/checkconfirm?q=%D1%91"_s;

/// A message as a loyalty plug-in gives it.
QVariantMap message(const QString& payload)
{
    return {{u"payload"_s, payload},
            {u"headers"_s, QVariantMap{{u"Content-Type"_s, u"application/xml"_s},
                                       {u"Authorization"_s, u"Basic dTpwOms="_s}}},
            {u"urls"_s, QVariantMap{{u"2"_s, confirmAddress}, {u"1"_s, tryAddress}}}};
}

TEST(QueueContract, AMessageIsStoredWhenAddingReturns)
{
    const auto queue = subject().makeQueue();
    EXPECT_TRUE(queue->stored().isEmpty());
    EXPECT_TRUE(queue->broker().addToQueue(queueName, message(u"<a/>"_s), u"extra text"_s));
    const auto stored = queue->stored();
    ASSERT_EQ(stored.size(), 1);
    EXPECT_EQ(stored.first().queue, queueName);
    EXPECT_EQ(stored.first().extra, u"extra text"_s);
}

TEST(QueueContract, TheBodyIsKeptByteForByte)
{
    const QString payload =
        u"<?xml version='1.0'?>\r\n<a b=\"&lt;\">Ёж \U0001F600\t</a>\n"_s + QString(100'000, u'я');
    const auto queue = subject().makeQueue();
    queue->broker().addToQueue(queueName, message(payload), {});
    const auto stored = queue->stored();
    ASSERT_EQ(stored.size(), 1);
    EXPECT_TRUE(stored.first().payload == payload) << "of " << payload.size() << " characters";
}

TEST(QueueContract, AllHeadersAreKept)
{
    const auto queue = subject().makeQueue();
    queue->broker().addToQueue(queueName, message(u"<a/>"_s), {});
    const auto stored = queue->stored();
    ASSERT_EQ(stored.size(), 1);
    const QMap<QString, QString> expected{{u"Content-Type"_s, u"application/xml"_s},
                                          {u"Authorization"_s, u"Basic dTpwOms="_s}};
    EXPECT_EQ(stored.first().headers, expected);
}

TEST(QueueContract, TheAddressesAreKeptInTheOrderOfTheirNumbers)
{
    const auto queue = subject().makeQueue();
    queue->broker().addToQueue(queueName, message(u"<a/>"_s), {});
    const auto stored = queue->stored();
    ASSERT_EQ(stored.size(), 1);
    EXPECT_EQ(stored.first().addresses, (QStringList{tryAddress, confirmAddress}));
}

TEST(QueueContract, AMessageStandsBehindAllOthers)
{
    const auto queue = subject().makeQueue();
    for (const QString& payload : {u"<b/>"_s, u"<a/>"_s, u"<c/>"_s}) {
        queue->broker().addToQueue(queueName, message(payload), {});
    }
    const auto stored = queue->stored();
    ASSERT_EQ(stored.size(), 3);
    EXPECT_EQ(stored.at(0).payload, u"<b/>"_s);
    EXPECT_EQ(stored.at(1).payload, u"<a/>"_s);
    EXPECT_EQ(stored.at(2).payload, u"<c/>"_s);
}

TEST(QueueContract, EqualMessagesAreStoredEachByItself)
{
    const auto queue = subject().makeQueue();
    queue->broker().addToQueue(queueName, message(u"<a/>"_s), {});
    queue->broker().addToQueue(queueName, message(u"<a/>"_s), {});
    EXPECT_EQ(queue->stored().size(), 2);
}

TEST(QueueContract, InATransactionAMessageIsStoredWithTheCommit)
{
    const auto queue = subject().makeQueue();
    qsizetype before = -1;
    queue->inTransaction([&] {
        queue->broker().addToQueue(queueName, message(u"<a/>"_s), {});
        before = queue->stored().size();
    });
    EXPECT_EQ(before, 0) << "stored before the commit";
    EXPECT_EQ(queue->stored().size(), 1);
}

TEST(QueueContract, NothingIsLeftOfAnAbandonedTransaction)
{
    const auto queue = subject().makeQueue();
    queue->inAbandonedTransaction(
        [&] { queue->broker().addToQueue(queueName, message(u"<a/>"_s), {}); });
    EXPECT_TRUE(queue->stored().isEmpty());
}

TEST(QueueContract, WhatCannotBeStoredIsReportedAndNothingOfItIsLeft)
{
    const auto queue = subject().makeQueue();
    queue->broker().addToQueue(queueName, message(u"<a/>"_s), {});
    queue->breakStorage();
    try {
        queue->broker().addToQueue(queueName, message(u"<b/>"_s), {});
        ADD_FAILURE() << "no exception";
    } catch (const BasicException& error) {
        EXPECT_EQ(error.tr().id(), u"queueError"_s);
    }
    const auto stored = queue->stored();
    ASSERT_EQ(stored.size(), 1);
    EXPECT_EQ(stored.first().payload, u"<a/>"_s);
}

} // namespace
} // namespace contract

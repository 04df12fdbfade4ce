// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/samples.h"
#include "contract/subject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addPluginDataPromises() {}

namespace contract {
namespace {

const QString owner = u"Orva"_s;

TEST(PluginDataContract, AKeyThatWasNeverSetGivesTheDefault)
{
    const auto document = subject().makeDocument({});
    EXPECT_EQ(document->getPluginValue(owner, u"lastResponse"_s, u"none"_s), QVariant(u"none"_s));
    EXPECT_FALSE(document->getPluginValue(owner, u"lastResponse"_s, QVariant()).isValid());
}

TEST(PluginDataContract, TheLastValueSetCounts)
{
    const auto document = subject().makeDocument({});
    document->setPluginValue(owner, u"lastResponse"_s, u"first"_s);
    document->setPluginValue(owner, u"lastResponse"_s, u"second"_s);
    EXPECT_EQ(document->getPluginValue(owner, u"lastResponse"_s, {}), QVariant(u"second"_s));
}

TEST(PluginDataContract, OwnersAndKeysAreApart)
{
    const auto document = subject().makeDocument({});
    document->setPluginValue(u"One"_s, u"key"_s, 1);
    document->setPluginValue(u"Two"_s, u"key"_s, 2);
    document->setPluginValue(u"One"_s, u"Key"_s, 3);
    EXPECT_EQ(document->getPluginValue(u"One"_s, u"key"_s, 0), QVariant(1));
    EXPECT_EQ(document->getPluginValue(u"Two"_s, u"key"_s, 0), QVariant(2));
    EXPECT_EQ(document->getPluginValue(u"One"_s, u"Key"_s, 0), QVariant(3));
}

TEST(PluginDataContract, DocumentsAreApart)
{
    const auto one = subject().makeDocument({});
    const auto two = subject().makeDocument({});
    one->setPluginValue(owner, u"key"_s, 1);
    EXPECT_EQ(two->getPluginValue(owner, u"key"_s, 0), QVariant(0));
}

/// What a loyalty system keeps: texts of any size, byte arrays, lists and maps in each other.
TEST(PluginDataContract, KeepsEveryKindOfValueAcrossARestart)
{
    const QMap<QString, QVariant> values{
        {u"text"_s, u"<a>Ёж \"&\" \U0001F600</a>\n"_s},
        {u"empty text"_s, u""_s},
        {u"long text"_s, QString(100'000, u'я')},
        {u"bytes"_s, QByteArray("\x00\xff<\n", 4)},
        {u"number"_s, 42},
        {u"amount"_s, 0.1},
        {u"truth"_s, true},
        {u"list"_s, QVariantList{QVariantMap{{u"position"_s, 1}, {u"bonusAmount"_s, 2.5}},
                                 QVariantMap{{u"position"_s, 2}}}},
    };
    DocumentData data;
    data.documentId = u"kept"_s;
    data.goodsItems = {goodsLine(1, 100)};
    auto document = subject().makeDocument(data);
    for (const auto& [key, value] : values.asKeyValueRange()) {
        document->setPluginValue(owner, key, value);
    }
    document = subject().suspendAndRestore(document);
    ASSERT_FALSE(document.isNull());
    for (const auto& [key, value] : values.asKeyValueRange()) {
        EXPECT_EQ(document->getPluginValue(owner, key, QVariant()), value) << key.toStdString();
    }
    EXPECT_EQ(document->getDocumentId(), u"kept"_s);
}

} // namespace
} // namespace contract

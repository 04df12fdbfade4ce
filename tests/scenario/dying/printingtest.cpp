// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a failing test shows of Qt's values.

#include "contract/printers.h"

#include <QDomDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using ::testing::PrintToString;

namespace {

TEST(Printing, showsTextsAsTexts)
{
    EXPECT_EQ(PrintToString(u"чек"_s), "\"чек\"");
    EXPECT_EQ(PrintToString(QString()), "(null)");
    EXPECT_EQ(PrintToString(u""_s), "\"\"");
    EXPECT_EQ(PrintToString(QStringView(u"чек")), "\"чек\"");
    EXPECT_EQ(PrintToString("abc"_L1), "\"abc\"");
    EXPECT_EQ(PrintToString(QChar(u'ч')), "'ч'");
    EXPECT_EQ(PrintToString(QByteArray("<a/>")), "\"<a/>\"");
    EXPECT_EQ(PrintToString(QByteArray("\xff\x01", 2)), "bytes ff 01");
}

TEST(Printing, showsListsAndMapsWithWhatIsInThem)
{
    EXPECT_EQ(PrintToString(QStringList{u"a"_s, u"b"_s}), "{ \"a\", \"b\" }");
    EXPECT_EQ(PrintToString(QList<QByteArray>{"a"}), "{ \"a\" }");
    EXPECT_EQ(PrintToString(QMap<QString, int>{{u"a"_s, 1}, {u"b"_s, 2}}),
              "{ \"a\": 1, \"b\": 2 }");
    EXPECT_EQ(PrintToString(QHash<QString, QString>{{u"a"_s, u"x"_s}}), "{ \"a\": \"x\" }");
    EXPECT_EQ(PrintToString(QMap<QString, int>()), "{ }");
}

TEST(Printing, showsAVariantWithItsType)
{
    EXPECT_EQ(PrintToString(QVariant(5)), "QVariant(int, 5)");
    EXPECT_EQ(PrintToString(QVariant(u"5"_s)), "QVariant(QString, \"5\")");
    EXPECT_EQ(PrintToString(QVariant()), "QVariant(Invalid)");
}

TEST(Printing, showsTimesAddressesAndDocuments)
{
    EXPECT_EQ(PrintToString(QDateTime({2026, 1, 2}, {3, 4, 5, 6})), "2026-01-02T03:04:05.006");
    EXPECT_EQ(PrintToString(QDateTime()), "(no time)");
    EXPECT_EQ(PrintToString(QDate(2026, 1, 2)), "2026-01-02");
    EXPECT_EQ(PrintToString(QUrl(u"http://host:1/a"_s)), "http://host:1/a");
    QDomDocument document;
    ASSERT_TRUE(document.setContent(u"<a><b>1</b></a>"_s));
    EXPECT_EQ(PrintToString(document.documentElement().firstChildElement()), "<b>1</b>");
    EXPECT_EQ(PrintToString(QDomElement()), "(no node)");
    EXPECT_EQ(PrintToString(QJsonObject{{u"a"_s, 1}}), "{\"a\":1}");
}

TEST(Printing, showsWhatIsPointedTo)
{
    EXPECT_EQ(PrintToString(QSharedPointer<QString>::create(u"x"_s)), "pointer to \"x\"");
    EXPECT_EQ(PrintToString(QSharedPointer<QString>()), "(null)");
}

} // namespace

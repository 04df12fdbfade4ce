// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The limits that count over the whole text, each at its edge.

#include "tests/client/printers.h"

#include "client/harmlessxml.h"
#include "tests/client/hostilexml.h"

#include <gtest/gtest.h>

using namespace tests;

namespace {

constexpr int nodeLimit = 1'000'000;
constexpr int indentationLimit = 64'000'000;
constexpr qint64 escapeMoveLimit = 10'000'000'000;

QString inRoot(const QString& content)
{
    return u"<r>"_s + content + u"</r>"_s;
}

/// Elements whose levels add up to the sum. Most of them are on the last level, one makes up for
/// what is left over.
QString withLevelSum(int sum)
{
    const int chain = levelLimit - 1;
    const int left = sum - chain * (chain + 1) / 2;
    const int many = left / levelLimit;
    const int single = left % levelLimit;
    QString text;
    for (int level = 1; level <= chain; ++level) {
        text += single == level ? u"<b/><a>"_s : u"<a>"_s;
    }
    return text + u"<c/>"_s.repeated(many) + u"</a>"_s.repeated(chain);
}

/// A text of that length with as many escapes as one may have.
QString withMoves(qint64 length)
{
    return u"<a>"_s + u"&lt;"_s.repeated(escapeLimit) +
           u"x"_s.repeated(length - 4 * qint64{escapeLimit}) + u"</a>"_s;
}

} // namespace

TEST(HarmlessSums, acceptAMillionNodesAndRefuseOneMore)
{
    // the root's two tags count as well
    EXPECT_TRUE(orva::isHarmlessXml(inRoot(u"<a/>"_s.repeated(nodeLimit - 2))));
    EXPECT_FALSE(orva::isHarmlessXml(inRoot(u"<a/>"_s.repeated(nodeLimit - 1))));
}

TEST(HarmlessSums, countAttributesAmongTheNodes)
{
    const QString pairs = u"<a x=''/>"_s.repeated(nodeLimit / 2 - 2);
    EXPECT_TRUE(orva::isHarmlessXml(inRoot(pairs + u"<a x=''/>"_s)));
    EXPECT_FALSE(orva::isHarmlessXml(inRoot(pairs + u"<a x='' y=''/>"_s)));
    // in a text that is cut an attribute is the last node
    EXPECT_TRUE(orva::isHarmlessXml(u"<r><a/>"_s + pairs + u"<a x=''/>"_s));
    EXPECT_FALSE(orva::isHarmlessXml(u"<r><a/>"_s + pairs + u"<a x='' y=''/>"_s));
}

TEST(HarmlessSums, countCommentsCdataAndInstructionsAmongTheNodes)
{
    for (const QString& node : {u"<!---->"_s, u"<![CDATA[]]>"_s, u"<?p?>"_s}) {
        EXPECT_TRUE(orva::isHarmlessXml(inRoot(node.repeated(nodeLimit - 2)))) << qPrintable(node);
        EXPECT_FALSE(orva::isHarmlessXml(inRoot(node.repeated(nodeLimit - 1)))) << qPrintable(node);
    }
}

TEST(HarmlessSums, acceptIndentationOf64MillionBlanksAndRefuseOneMore)
{
    EXPECT_TRUE(orva::isHarmlessXml(withLevelSum(indentationLimit)));
    EXPECT_FALSE(orva::isHarmlessXml(withLevelSum(indentationLimit + 1)));
}

TEST(HarmlessSums, acceptTenThousandMillionEscapeMovesAndRefuseOneMore)
{
    const QString most = withMoves(escapeMoveLimit / escapeLimit);
    EXPECT_TRUE(orva::isHarmlessXml(inRoot(most)));
    // a value of one character that is written as an escape
    EXPECT_FALSE(orva::isHarmlessXml(inRoot(most + u"<a x='\"'/>"_s)));
    EXPECT_FALSE(orva::isHarmlessXml(withMoves(escapeMoveLimit / escapeLimit + 1)));
}

TEST(HarmlessSums, countForATextNothingOfTheTagsAroundIt)
{
    const QString most = withMoves(escapeMoveLimit / escapeLimit);
    const QString text = most.sliced(3, most.size() - 7);
    for (const QString& before : {u"<b>"_s, u"<b></b>"_s, u"<b/>"_s, u"<b x='1'/>"_s, u"<!--b-->"_s,
                                  u"<![CDATA[b]]>"_s, u"<?b?>"_s}) {
        EXPECT_TRUE(orva::isHarmlessXml(inRoot(before + text))) << qPrintable(before);
    }
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Documents as people read them: paths, lines, differences and what elements mean.

#include "protocol/findings.h"
#include "protocol/xmldifference.h"
#include "protocol/xmltree.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using protocol::Findings;
using protocol::Meaning;
using protocol::XmlDifference;
using protocol::XmlTree;

namespace {

const QByteArray check = "<check>\n <lines>\n  <line><sum>1</sum></line>\n"
                         "  <line>\n   <sum>2</sum><sum>3</sum>\n  </line>\n </lines>\n</check>\n";

std::string differenceText(const QByteArray& first, const QByteArray& second)
{
    const auto found = XmlDifference::between(first, second);
    return found ? u"%1, %2: %3 | %4"_s.arg(found->path)
                       .arg(found->line)
                       .arg(found->first, found->second)
                       .toStdString()
                 : std::string("none");
}

QByteArray changed(const QByteArray& from, const QByteArray& to)
{
    QByteArray copy = check;
    return copy.replace(from, to);
}

} // namespace

TEST(XmlTree, pathsCountSiblingsOfTheSameNameOnly)
{
    const XmlTree tree(check);
    QStringList paths;
    for (qsizetype i = 0; i < tree.elements().size(); ++i) {
        paths.append(u"%1 %2"_s.arg(tree.elements().at(i).line).arg(tree.path(i)));
    }
    EXPECT_EQ(paths, (QStringList{u"1 /check"_s, u"2 /check/lines"_s, u"3 /check/lines/line[1]"_s,
                                  u"3 /check/lines/line[1]/sum"_s, u"4 /check/lines/line[2]"_s,
                                  u"5 /check/lines/line[2]/sum[1]"_s,
                                  u"5 /check/lines/line[2]/sum[2]"_s}));
    EXPECT_EQ(tree.problem(), QString());
    EXPECT_EQ(tree.find(0, {u"lines"_s, u"line"_s, u"sum"_s}), 3);
    EXPECT_EQ(tree.find(0, {u"lines"_s, u"other"_s}), -1);
    EXPECT_EQ(tree.wholeText(4).simplified(), u"23"_s);
}

TEST(XmlTree, whatIsNotWholeIsReadAsFarAsItGoes)
{
    const XmlTree tree("<a><b>1</b><c>");
    EXPECT_EQ(tree.elements().size(), 3);
    EXPECT_FALSE(tree.problem().isEmpty());
    EXPECT_TRUE(XmlTree(QByteArray()).elements().isEmpty());
    EXPECT_TRUE(XmlTree("no document").elements().isEmpty());
}

TEST(XmlTree, deepNestingCostsNoStack)
{
    constexpr int depth = 200'000;
    const XmlTree tree(QByteArray("<a>").repeated(depth));
    EXPECT_EQ(tree.elements().size(), depth);
}

TEST(XmlDifference, namesTheFirstElementThatDiffers)
{
    EXPECT_EQ(differenceText(check, check), "none");
    EXPECT_EQ(differenceText(check, changed("<sum>3", "<sum>4")),
              "/check/lines/line[2]/sum[2], 5: 3 | 4");
    EXPECT_EQ(differenceText(check, changed("<sum>2</sum>", "")),
              "/check/lines/line[2]/sum[1], 5: 2 | 3");
    EXPECT_EQ(differenceText(check, changed("<sum>3</sum>", "")),
              "/check/lines/line[2]/sum[2], 5: <sum> | ");
    EXPECT_EQ(differenceText(changed("<sum>3</sum>", ""), check),
              "/check/lines/line[2]/sum[2], 5:  | <sum>");
    EXPECT_EQ(differenceText(check, changed("<sum>1</sum>", "<total>1</total>")),
              "/check/lines/line[1]/sum, 3: <sum> | <total>");
    EXPECT_EQ(differenceText(check, changed("<sum>1", "<sum unit=\"rub\">1")),
              "/check/lines/line[1]/sum, 3: <sum> | <sum unit=\"rub\">");
    EXPECT_EQ(differenceText(check, changed("<line><sum>1</sum></line>", "<line/>")),
              "/check/lines/line[1]/sum, 3: <sum> | <line>");
}

TEST(XmlDifference, theSameElementsWrittenOtherwiseDifferToo)
{
    EXPECT_EQ(differenceText("<a>\n <b/>\n</a>", "<a>\n  <b/>\n</a>"),
              ", 2: <b/>\n</a> |  <b/>\n</a>");
    EXPECT_NE(differenceText("not xml", "not xml either"), "none");
}

TEST(Findings, amountsCountAsTheHostCountsThem)
{
    const auto line = [](const QByteArray& id, const QByteArray& awards) {
        return "<RawItem><id>" + id + "</id><awards><RawItemAwards>" + awards +
               "</RawItemAwards></awards></RawItem>";
    };
    const Findings findings(
        "<RawCheck><items>" +
        line("1", "<discount>20.00</discount><discount>5.00</discount>"
                  "<discountOnChange>0.65</discountOnChange><awardBonus>-3.44</awardBonus>") +
        line("2",
             "<discount>-1.00</discount><discountOnChange>0.005</discountOnChange>"
             "<awardBonus>0.004</awardBonus><allowBonusInCurrency>many</allowBonusInCurrency>") +
        "</items></RawCheck>");
    EXPECT_EQ(findings.of(Meaning::Discount, 1).size(), 2) << "the first of each name counts";
    EXPECT_EQ(Findings::sum(findings.of(Meaning::Discount, 1)), 20'65);
    EXPECT_EQ(Findings::sum(findings.of(Meaning::Accrual, 1)), -3'44);
    EXPECT_EQ(Findings::sum(findings.of(Meaning::Discount, 2)), 0);
    EXPECT_EQ(Findings::sum(findings.of(Meaning::Accrual, 2)), 0);
    EXPECT_EQ(Findings::sum(findings.of(Meaning::SpendingLimit, 2)), 0);
    EXPECT_EQ(findings.of(Meaning::SpendingLimit, 2).first().text, u"many"_s);
    EXPECT_TRUE(findings.of(Meaning::Discount, 3).isEmpty());
}

TEST(Findings, messagesGoByTheirChannel)
{
    const Findings findings(
        "<r><informing>"
        "<RawCheckInforming><communicationChannel>pos</communicationChannel><info>A</info>"
        "</RawCheckInforming>"
        "<RawCheckInforming><communicationChannel>sms</communicationChannel><info>B</info>"
        "</RawCheckInforming>"
        "<RawCheckInforming><communicationChannel>check</communicationChannel><info>C</info>"
        "</RawCheckInforming></informing></r>");
    ASSERT_EQ(findings.all().size(), 2);
    EXPECT_EQ(findings.of(Meaning::MessageToCashier).first().text, u"A"_s);
    EXPECT_EQ(findings.of(Meaning::MessageToCustomer).first().path,
              u"/r/informing/RawCheckInforming[3]/info"_s);
}

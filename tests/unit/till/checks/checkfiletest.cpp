// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checkfile.h"

#include "tests/unit/input/hostiletoml.h"
#include "tests/unit/till/tilltest.h"

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using till::CheckFile;

namespace {

const QString saleHead = u"type = \"sale\"\n"_s;
const QString goodLine = u"[[line]]\ncode = \"1\"\nname = \"Чай\"\nprice = 1\nquantity = 1\n"_s;

class CheckFileTest : public ::testing::Test
{
protected:
    CheckFile read(const QString& content)
    {
        return CheckFile::read(folder.write(u"check.toml"_s, content));
    }
    /// The sentence that refuses a file, its path left out.
    QString refusal(const QString& content)
    {
        const QString file = folder.write(u"check.toml"_s, content);
        return tests::refusalOf([&] { CheckFile::read(file); }).replace(file, u"check.toml"_s);
    }

    TestFolder folder;
};

/// A file that is refused and how the refusal begins.
struct BadFile
{
    const char* name;
    QString content;
    QString refusal;
};

void PrintTo(const BadFile& file, std::ostream* out)
{
    *out << file.name;
}

class BadCheckFileTest : public CheckFileTest, public ::testing::WithParamInterface<BadFile>
{};

QString line(const QString& fields)
{
    return saleHead + u"[[line]]\n"_s + fields;
}

} // namespace

TEST_F(CheckFileTest, aSaleIsReadToTheKopeck)
{
    const CheckFile file = read(u"type = \"sale\"\nnumber = 117\ncard = \"2200\"\n"
                                "[[line]]\ncode = \"1001\"\nname = \"Чай\"\nprice = 149.90\n"
                                "quantity = 2\nminPrice = \"100.00\"\n"
                                "[[line]]\ncode = \"1002\"\nname = \"Яблоки\"\nprice = \"89.90\"\n"
                                "quantity = 0.765\nunit = \"kg\"\n"
                                "[[line]]\ncode = \"3\"\nname = \"Сыр\"\nprice = 10\n"
                                "quantity = 1\nsum = 9.99\n"_s);
    EXPECT_EQ(file.type, CheckFile::Type::Sale);
    EXPECT_EQ(file.number, 117);
    EXPECT_EQ(file.card, u"2200"_s);
    ASSERT_EQ(file.lines.size(), 3);
    const till::Line& tea = file.lines.at(0);
    EXPECT_EQ(tea.position, 1);
    EXPECT_EQ(tea.code, u"1001"_s);
    EXPECT_EQ(tea.name, u"Чай"_s);
    EXPECT_EQ(tea.priceKopecks, 14990);
    EXPECT_EQ(tea.thousandths, 2000);
    EXPECT_EQ(tea.sumKopecks, 29980);
    EXPECT_EQ(tea.minPriceKopecks, 10000);
    EXPECT_FALSE(tea.fractional);
    EXPECT_EQ(file.lines.at(1).position, 2);
    EXPECT_TRUE(file.lines.at(1).fractional);
    EXPECT_EQ(file.lines.at(1).thousandths, 765);
    EXPECT_EQ(file.lines.at(1).sumKopecks, 6877);
    EXPECT_EQ(file.lines.at(2).sumKopecks, 999);
}

TEST_F(CheckFileTest, aSaleNeedsNeitherCardNorNumber)
{
    const CheckFile file = read(saleHead + goodLine);
    EXPECT_EQ(file.number, std::nullopt);
    EXPECT_TRUE(file.card.isEmpty());
    EXPECT_EQ(file.lines.size(), 1);
}

TEST_F(CheckFileTest, aReturnNamesItsSaleAndItsLines)
{
    const CheckFile file = read(u"type = \"return\"\nsale = \"abc\"\n"
                                "[[line]]\nposition = 2\nquantity = 0.250\n"
                                "[[line]]\nposition = 1\nquantity = 1\n"_s);
    EXPECT_EQ(file.type, CheckFile::Type::Return);
    EXPECT_EQ(file.sale, u"abc"_s);
    ASSERT_EQ(file.lines.size(), 2);
    EXPECT_EQ(file.lines.at(0).position, 2);
    EXPECT_EQ(file.lines.at(0).returnedThousandths, 250);
    EXPECT_EQ(file.lines.at(1).returnedThousandths, 1000);
}

TEST_F(CheckFileTest, aReturnMayNameItsSaleByANumber)
{
    EXPECT_EQ(read(u"type = \"return\"\nsale = 117\n[[line]]\nposition = 1\nquantity = 1\n"_s).sale,
              u"117"_s);
}

TEST_F(CheckFileTest, aMissingFileIsNamed)
{
    const QString text = tests::refusalOf([] { CheckFile::read(u"/nowhere/check.toml"_s); });
    EXPECT_TRUE(text.startsWith(u"/nowhere/check.toml: the check file cannot be read"_s))
        << text.toStdString();
}

TEST_F(CheckFileTest, everyRefusalIsAUsageError)
{
    try {
        read(u"type = \"gift\"\n"_s);
        FAIL() << "the file was taken";
    } catch (const till::Failure& failure) {
        EXPECT_EQ(failure.exitCode(), till::ExitCode::Usage);
    }
}

TEST_P(BadCheckFileTest, isRefusedWithFileLineAndField)
{
    const QString text = refusal(GetParam().content);
    EXPECT_TRUE(text.startsWith(GetParam().refusal))
        << "expected: " << GetParam().refusal.toStdString() << "\nactual:   " << text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadCheckFileTest,
    ::testing::Values(
        BadFile{"syntax", u"type = \"sale\"\ncard = \n"_s,
                u"check.toml, line 2: this is not TOML"_s},
        BadFile{"no_type", goodLine, u"check.toml, line 1, type: the field is missing"_s},
        BadFile{"type_is_a_number", u"type = 1\n"_s,
                u"check.toml, line 1, type: a text is expected"_s},
        BadFile{"unknown_type", u"type = \"gift\"\n"_s,
                u"check.toml, line 1, type: the type \"gift\" is not known"_s},
        BadFile{"number_0", u"type = \"sale\"\nnumber = 0\n"_s + goodLine,
                u"check.toml, line 2, number: a whole number from 1"_s},
        BadFile{"number_too_large", u"type = \"sale\"\nnumber = 2147483648\n"_s + goodLine,
                u"check.toml, line 2, number: a whole number from 1"_s},
        BadFile{"empty_card", u"type = \"sale\"\ncard = \" \"\n"_s + goodLine,
                u"check.toml, line 2, card: the text is empty"_s},
        BadFile{"unknown_field", u"type = \"sale\"\ncrad = \"1\"\n"_s + goodLine,
                u"check.toml, line 2, crad: there is no such field"_s},
        BadFile{"no_lines", saleHead, u"check.toml, line 1, line: there is no goods line"_s},
        BadFile{"line_is_a_table", saleHead + u"[line]\ncode = \"1\"\n"_s,
                u"check.toml, line 2, line: there is no goods line"_s},
        BadFile{"line_is_a_list_of_numbers", saleHead + u"line = [1]\n"_s,
                u"check.toml, line 2, line: a goods line is a table"_s},
        BadFile{"no_code", line(u"name = \"Чай\"\nprice = 1\nquantity = 1\n"_s),
                u"check.toml, line 2, code: the field is missing"_s},
        BadFile{"no_price", line(u"code = \"1\"\nname = \"Чай\"\nquantity = 1\n"_s),
                u"check.toml, line 2, price: the field is missing"_s},
        BadFile{"price_with_three_decimals",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = 49.995\nquantity = 1\n"_s),
                u"check.toml, line 5, price: \"49.995\" is not a number from 0"_s},
        BadFile{"negative_price",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = -1.50\nquantity = 1\n"_s),
                u"check.toml, line 5, price: \"-1.5\" is not a number from 0"_s},
        BadFile{"price_with_comma",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = \"1,50\"\nquantity = 1\n"_s),
                u"check.toml, line 5, price: \"1,50\" is not a number from 0"_s},
        BadFile{"price_is_nan",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = nan\nquantity = 1\n"_s),
                u"check.toml, line 5, price: a number is expected"_s},
        BadFile{"price_is_infinite",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = inf\nquantity = 1\n"_s),
                u"check.toml, line 5, price: a number is expected"_s},
        BadFile{"price_too_large",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = 10000000001\nquantity = 1\n"_s),
                u"check.toml, line 5, price: 10000000001 is more than a till can count"_s},
        BadFile{"sum_too_large",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = 10000000000\nquantity = 2\n"_s),
                u"check.toml, line 5, price: price times quantity is more than a check"_s},
        BadFile{"check_too_large",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = 10000000000\nquantity = 1\n"_s) +
                    goodLine,
                u"check.toml, line 7, sum: up to this line the sum is more than a check"_s},
        BadFile{"quantity_0", line(u"code = \"1\"\nname = \"Чай\"\nprice = 1\nquantity = 0\n"_s),
                u"check.toml, line 6, quantity: nothing is 0 of something"_s},
        BadFile{"quantity_with_four_decimals",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = 1\nquantity = 0.1234\n"_s),
                u"check.toml, line 6, quantity: \"0.1234\" is not a number from 0"_s},
        BadFile{"half_a_piece",
                line(u"code = \"1\"\nname = \"Чай\"\nprice = 1\nquantity = 0.5\n"_s),
                u"check.toml, line 6, quantity: pieces are counted in whole numbers"_s},
        BadFile{
            "unknown_unit",
            line(u"code = \"1\"\nname = \"Ч\"\nprice = 1\nquantity = 1\nunit = \"l\"\n"_s),
            u"check.toml, line 7, unit: the unit \"l\" is not known; write \"pcs\" or \"kg\""_s},
        BadFile{"misspelled_minimum_price",
                line(u"code = \"1\"\nname = \"Ч\"\nprice = 1\nquantity = 1\nminprice = 1\n"_s),
                u"check.toml, line 7, minprice: there is no such field"_s},
        BadFile{"return_without_sale",
                u"type = \"return\"\n[[line]]\nposition = 1\nquantity = 1\n"_s,
                u"check.toml, line 1, sale: the field is missing"_s},
        BadFile{"return_line_without_position",
                u"type = \"return\"\nsale = \"1\"\n[[line]]\nquantity = 1\n"_s,
                u"check.toml, line 3, position: the field is missing"_s},
        BadFile{"return_line_twice",
                u"type = \"return\"\nsale = \"1\"\n[[line]]\nposition = 1\nquantity = 1\n"
                "[[line]]\nposition = 1\nquantity = 1\n"_s,
                u"check.toml, line 7, position: position 1 stands here twice"_s},
        BadFile{"return_with_prices",
                u"type = \"return\"\nsale = \"1\"\n[[line]]\nposition = 1\nquantity = 1\n"
                "price = 1\n"_s,
                u"check.toml, line 6, price: there is no such field"_s}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(CheckFileTest, levelsThatTheParserCannotBearAreRefusedWithTheLine)
{
    for (const QByteArray& deep : tests::deepToml()) {
        EXPECT_EQ(refusal(saleHead + QString::fromLatin1(deep)),
                  u"check.toml, line 2: tables and lists are nested deeper than 64 levels; look at "
                  "the dots and brackets."_s);
    }
}

TEST_F(CheckFileTest, whatIsNoRegularFileIsRefusedAtOnce)
{
    const QString pipe = folder.file(u"pipe"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& file : {u"/dev/zero"_s, pipe}) {
        EXPECT_EQ(tests::refusalOf([&] { CheckFile::read(file); }),
                  file + u" is no regular file; name a check file."_s);
    }
}

TEST_F(CheckFileTest, aFileThatIsLargerThanAnyCheckIsRefused)
{
    EXPECT_EQ(
        refusal(u"#"_s.repeated(4'194'305)),
        u"check.toml is larger than 4194304 bytes, the most that a check file may have; split "
        "the check."_s);
}

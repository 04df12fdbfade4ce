// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Answers that would take more memory than a small till has: selling ends in a sentence, with the
// sale closed or the reason told, and never by a signal.

#include "contract/rawserver.h"
#include "tests/support/shop.h"

#include <set>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct HeavyAnswer
{
    const char* name;
    QByteArray content;
};

/// What a till needs before it goes on stands in front of what is heavy.
QByteArray heavyBody(const QByteArray& content)
{
    return "<RawCheck><client><RawCheckClient><account><RawCheckAccount><balance>250.50</balance>"
           "</RawCheckAccount></account></RawCheckClient></client><awards><RawCheckAwards>"
           "<allowBonus>60.00</allowBonus></RawCheckAwards></awards>" +
           content + "</RawCheck>";
}

QByteArray manyAttributes()
{
    QByteArray element = "<a";
    for (int i = 0; i < 60; ++i) {
        element += " b" + QByteArray::number(i) + "=''";
    }
    return element + "/>";
}

QByteArray goodsLine(const QByteArray& position)
{
    return "<RawItem><id>" + position +
           "</id><awards><RawItemAwards><discount>0.01</discount><discountOnChange>0.01"
           "</discountOnChange><awardBonus>0.01</awardBonus><allowBonusInCurrency>0.01"
           "</allowBonusInCurrency></RawItemAwards></awards></RawItem>";
}

QByteArray differentLines(int count)
{
    QByteArray all = "<items>";
    for (int position = 1; position <= count; ++position) {
        all += goodsLine(QByteArray::number(position));
    }
    return all + "</items>";
}

/// Those that the limits let pass, and those that they are there for.
std::vector<HeavyAnswer> heavyAnswers()
{
    return {{"lines that pass", differentLines(10'000)},
            {"elements and a text that pass", QByteArray("<a>1</a>").repeated(130'000) + "<a>" +
                                                  QByteArray(3'000'000, 'x') + "</a>"},
            {"lines", differentLines(35'000)},
            {"lines of one position", "<items>" + goodsLine("1").repeated(5'000) + "</items>"},
            {"namespaces", QByteArray("<a:b xmlns:a='urn:a'/>").repeated(190'000)},
            {"attributes", manyAttributes().repeated(16'000)},
            {"levels", QByteArray("<a>").repeated(500'000) + QByteArray("</a>").repeated(500'000)}};
}

class HeavyAnswerTest : public Shop
{
protected:
    /// Sells with so much address space. The shell tells a signal by an exit code above 128.
    RunResult sellWithin(int megabytes, const QUrl& answering)
    {
        writeConfig(u"secret"_s, answering.toString());
        writeFile(u"orva.toml"_s,
                  readFile(u"orva.toml"_s) + u"[recording]\nfolder = \"records\"\n"_s);
        const QString limited = u"ulimit -v %1; \"$@\"; exit $?"_s.arg(megabytes * 1024);
        return runProgram(u"bash"_s,
                          {u"-c"_s, limited, u"bash"_s, QStringLiteral(ORVA_TILL), u"sell"_s,
                           u"sale.toml"_s, u"--points"_s, u"all"_s},
                          folder());
    }
};

} // namespace

TEST_F(HeavyAnswerTest, EndsInASentenceWhereMemoryIsShort)
{
    const std::set<int> told{0, 1, 3};
    for (const HeavyAnswer& answer : heavyAnswers()) {
        const QByteArray body = heavyBody(answer.content);
        RawServer server(RawServer::answering(RawServer::answer("200 OK", body.toStdString())));
        for (const int megabytes : {300, 160}) {
            const RunResult sale = sellWithin(megabytes, server.url());
            EXPECT_TRUE(told.contains(sale.exitCode))
                << answer.name << ", " << megabytes << " MB: " << sale.exitCode << '\n'
                << qPrintable(sale.output.right(1000));
            EXPECT_TRUE(sale.output.contains(u"Paid: "_s) || sale.output.contains(u"orva-till: "_s))
                << answer.name << ", " << megabytes << " MB:\n"
                << qPrintable(sale.output.right(1000));
        }
        EXPECT_FALSE(server.requests().empty()) << answer.name;
    }
}

TEST_F(HeavyAnswerTest, AnOrdinaryAnswerForTenThousandLinesIsTakenWithin300Megabytes)
{
    const QByteArray body = heavyBody(differentLines(10'000));
    RawServer server(RawServer::answering(RawServer::answer("200 OK", body.toStdString())));
    const RunResult sale = sellWithin(300, server.url());
    EXPECT_EQ(sale.exitCode, 0) << qPrintable(sale.output.right(1000));
}

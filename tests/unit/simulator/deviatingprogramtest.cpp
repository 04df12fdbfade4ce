// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/programfixture.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace simulator::test {

TEST_F(Program, deviatesAsItIsToldAndLetsOthersReadTheBody)
{
    const int port = serve({u"--deviate"_s, u"comma-decimals"_s, u"--deviate"_s,
                            u"points-unscaled"_s, u"--deviate"_s, u"any-password"_s});
    const TextCheck sale{
        u"s"_s, u"2200000000017"_s, u"100.00"_s, {{u"1"_s, u"1000"_s, u"1.000"_s, u"100.00"_s}}};
    const auto answer = send(port, "precheck", document(sale));
    ASSERT_TRUE(answer);
    const QByteArray granted = QByteArray::fromStdString(answer->body);
    EXPECT_EQ(valueAt(granted, u"items/RawItem/awards/RawItemAwards/awardBonus"_s), u"4,75"_s);
    const QByteArray body = confirmation(granted, {{u"1"_s, {u"5.00"_s, u"45.00"_s}}}, u"50.00"_s);
    httplib::Client stranger("127.0.0.1", port);
    for (const char* endpoint : {"paymenttry", "checkconfirm"}) {
        const auto done =
            stranger.Post(post(endpoint, body).path.toStdString(), {{"Authorization", "Basic x"}},
                          body.toStdString(), "application/xml");
        ASSERT_TRUE(done);
        EXPECT_EQ(done->status, 200) << endpoint << ": " << done->body;
    }
    EXPECT_TRUE(run({u"ledger"_s, u"--csv"_s}).output.contains(u"4.75"_s)) << "half of it is sound";
}

TEST_F(Program, listsItsDeviationsAndKnowsNoOthers)
{
    const Outcome list = run({u"--deviate"_s, u"list"_s});
    EXPECT_EQ(list.exitCode, 0);
    const Outcome lines = run({u"--deviate"_s, u"list"_s, u"--json"_s});
    EXPECT_EQ(lines.exitCode, 0);
    const QStringList objects = lines.output.split(u'\n', Qt::SkipEmptyParts);
    EXPECT_GE(objects.size(), 50);
    for (const QString& line : objects) {
        const QJsonObject row = QJsonDocument::fromJson(line.toUtf8()).object();
        EXPECT_TRUE(list.output.contains(row[u"name"_s].toString())) << line.toStdString();
        EXPECT_TRUE(list.output.contains(row[u"breaks"_s].toString())) << line.toStdString();
        EXPECT_TRUE(row[u"blind"_s].isBool()) << line.toStdString();
    }
    const Outcome wrong = run({u"--deviate"_s, u"coma-decimals"_s});
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_TRUE(wrong.errors.contains(u"there is no deviation coma-decimals"_s))
        << wrong.errors.toStdString();
}

} // namespace simulator::test

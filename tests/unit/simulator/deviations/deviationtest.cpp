// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What each deviation does, beside what the sound server does with the same requests.

#include "simulator/deviations/gzip.h"
#include "tests/unit/simulator/deviations/deviantserver.h"
#include "tests/unit/simulator/servicefixture.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

QString textOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// The first column of a row, as a set of those that are shown.
QSet<QString> play(const std::vector<DeviationRow>& rows)
{
    QSet<QString> shown;
    for (const DeviationRow& row : rows) {
        const QString name = QString::fromLatin1(row.deviation);
        EXPECT_NE(deviation(name), nullptr) << row.deviation;
        DeviantServer sound{QString()};
        EXPECT_EQ(row.scene(sound), row.sound) << row.deviation << ", and the sound server";
        DeviantServer deviant(name);
        EXPECT_EQ(row.scene(deviant), row.deviating) << row.deviation;
        if (row.sound != row.deviating) {
            shown.insert(name);
        }
    }
    return shown;
}

QSet<QString> namesIn(std::initializer_list<std::span<const Deviation>> lists)
{
    QSet<QString> names;
    for (const std::span<const Deviation> list : lists) {
        for (const Deviation& row : list) {
            names.insert(QString::fromLatin1(row.name));
        }
    }
    return names;
}

TEST(Deviation, ofNumbersAndLinesIsSeenBesideTheSoundServer)
{
    EXPECT_EQ(play(documentRows()), namesIn({numberDeviations(), lineDeviations()}));
}

TEST(Deviation, ofTheCardAndOfWhatIsGrantedIsSeenBesideTheSoundServer)
{
    EXPECT_EQ(play(clientRows()), namesIn({clientDeviations()}));
}

TEST(Deviation, ofBodiesAndHeadersIsSeenBesideTheSoundServer)
{
    EXPECT_EQ(play(exchangeRows()), namesIn({bodyDeviations(), headerDeviations()}));
}

TEST(Deviation, ofRefusalsIsSeenBesideTheSoundServer)
{
    EXPECT_EQ(play(refusalRows()), namesIn({statusDeviations()}));
}

TEST(Deviation, ofStepsIsSeenBesideTheSoundServer)
{
    EXPECT_EQ(play(orderRows()), namesIn({orderDeviations()}));
}

TEST(Deviation, ofBookingIsSeenBesideTheSoundServer)
{
    EXPECT_EQ(play(bookingRows()), namesIn({bookingDeviations()}));
}

TEST(Deviations, areManyAndHaveNamesOfTheirOwn)
{
    static const QRegularExpression form(u"^[a-z0-9]+(-[a-z0-9]+)+$"_s);
    QSet<QString> names;
    int blindOnes = 0;
    for (const Deviation& row : deviations()) {
        const QString name = QString::fromLatin1(row.name);
        EXPECT_TRUE(form.match(name).hasMatch()) << row.name;
        EXPECT_FALSE(names.contains(name)) << row.name << " is there twice";
        names.insert(name);
        blindOnes += row.isBlind ? 1 : 0;
    }
    EXPECT_GE(names.size(), 50);
    EXPECT_GE(blindOnes, 15);
    EXPECT_EQ(deviation(u"no-such"_s), nullptr);
}

TEST(Deviations, eachBreakARequirementThatThereIs)
{
    static const QRegularExpression named(u"^name = \"([a-z0-9-]+)\"$"_s,
                                          QRegularExpression::MultilineOption);
    QSet<QString> requirements;
    const QString text = textOf(QStringLiteral(ORVA_REQUIREMENTS));
    for (const QRegularExpressionMatch& match : named.globalMatch(text)) {
        requirements.insert(match.captured(1));
    }
    EXPECT_GE(requirements.size(), 50);
    for (const Deviation& row : deviations()) {
        EXPECT_TRUE(requirements.contains(QString::fromLatin1(row.breaks)))
            << row.name << " breaks " << row.breaks << ", which is no requirement";
    }
}

TEST(Deviations, standInTheTableOfTheirFolder)
{
    const QString page = textOf(QStringLiteral(ORVA_DEVIATIONS_README));
    QString table;
    for (const Deviation& row : deviations()) {
        table += u"| `%1` | `%2` | %3 | %4 |\n"_s.arg(
            QString::fromLatin1(row.name), QString::fromLatin1(row.breaks),
            QString::fromUtf8(row.what), row.isBlind ? u"yes"_s : QString());
    }
    EXPECT_TRUE(page.contains(table)) << "the table should be\n" << table.toStdString();
}

TEST(Deviations, ofSeveralNamesHappenTogether)
{
    QTemporaryDir folder;
    Service service(builtIn(), folder.filePath(u"books.sqlite"_s));
    const DeviatingServer both(
        [&service](const Request& request) { return service.handle(request); },
        {u"comma-decimals"_s, u"line-ids-from-zero"_s, u"no-such"_s});
    const QByteArray answer = both.handle(post("precheck", document(saleOfTwo(u"s"_s)))).body;
    EXPECT_EQ(valueAt(answer, u"items/RawItem/id"_s), u"0"_s);
    EXPECT_EQ(valueAt(answer, u"total"_s), u"160,00"_s);
    // and the confirmation that carries them back is understood
    const QByteArray body =
        confirmation(answer, {{u"0"_s, {u"5.00"_s}}, {u"1"_s, {u"6.00"_s}}}, u"149.00"_s);
    const Answer tried = both.handle(post("paymenttry", body));
    EXPECT_EQ(tried.status, 200) << tried.reason.toStdString();
    const Answer confirmed = both.handle(post("checkconfirm", body));
    EXPECT_EQ(confirmed.status, 200) << confirmed.reason.toStdString();
    const Answer changed =
        both.handle(post("paymenttry", QByteArray(body).replace("160,00", "161,00")));
    EXPECT_EQ(changed.status, 400) << "another confirmation is not understood";
}

TEST(Gzip, isReadByOthers)
{
    const QByteArray packed = gzipped("123456789");
    EXPECT_EQ(packed.last(8).toHex(), "2639f4cb09000000"); // CRC-32 and length, least byte first
    EXPECT_EQ(packed.first(4).toHex(), "1f8b0800");
}

} // namespace
} // namespace simulator::test

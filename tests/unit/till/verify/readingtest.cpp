// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/reading.h"

#include "till/failure.h"
#include "till/verify/answerform.h"
#include "till/verify/draft.h"
#include "till/verify/gzip.h"
#include "till/verify/wire.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using till::verify::Booking;
using till::verify::Draft;
using till::verify::readAmount;

namespace names = protocol::names;

namespace {

/// The sale confirmation of the protocol's page, as far as it counts.
constexpr char exampleConfirmation[] = R"(<RawCheck><id>a</id><total>376.07</total><items>
<RawItem><id>1</id><total>299.80</total><awards><RawItemAwards><discount>29.98</discount>
<discountOnChange>0.65</discountOnChange><awardBonus>13.46</awardBonus></RawItemAwards></awards>
<usedAwards><RawItemUsedAwards><usedDiscount>29.98</usedDiscount><usedDiscount>0.65</usedDiscount>
<usedBonusInCurrency>50.00</usedBonusInCurrency></RawItemUsedAwards></usedAwards></RawItem>
<RawItem><id>2</id><total>68.77</total><awards><RawItemAwards><discount>3.44</discount>
<awardBonus>3.27</awardBonus></RawItemAwards></awards><usedAwards><RawItemUsedAwards>
<usedDiscount>3.44</usedDiscount></RawItemUsedAwards></usedAwards></RawItem>
<RawItem><id>3</id><total>7.50</total></RawItem></items></RawCheck>)";

} // namespace

TEST(VerifyReading, takesOnlyAmountsAsTheProtocolWritesThem)
{
    EXPECT_EQ(readAmount(u"12.50"_s), 1250);
    EXPECT_EQ(readAmount(u"-0.05"_s), -5);
    EXPECT_EQ(readAmount(u"7"_s), 700);
    EXPECT_EQ(readAmount(u"7.5"_s), 750);
    for (const QString& wrong : {u"10,50"_s, u"1 234.50"_s, u"+4.75"_s, u"1e2"_s, u"4.7500"_s,
                                 u"4.75 RUB"_s, u""_s, u" 4.75"_s, u"4."_s, u".5"_s}) {
        EXPECT_EQ(readAmount(wrong), std::nullopt) << qPrintable(wrong);
    }
}

TEST(VerifyReading, countsWhatTheExampleOfTheProtocolBooks)
{
    const Booking booking = Booking::of(exampleConfirmation);
    EXPECT_EQ(booking.total, 37607);
    EXPECT_EQ(booking.discount, 3407);
    EXPECT_EQ(booking.spent, 5000);
    EXPECT_EQ(booking.earned, 1428);
    EXPECT_EQ(booking.change(), 46428 - 50000);
}

TEST(VerifyReading, aLineThatIsMissingHasNothingInIt)
{
    const till::verify::Reading reading(exampleConfirmation);
    const qsizetype missing = reading.line(u"9"_s);
    EXPECT_EQ(missing, -1);
    EXPECT_TRUE(reading.textIn(missing, {names::sku}).isEmpty());
    EXPECT_EQ(reading.path(missing, {names::sku}), u"sku"_s);
    EXPECT_FALSE(till::verify::Reading("none").saysBalance());
}

TEST(VerifyDraft, changesWhatItIsToldAndNothingElse)
{
    Draft draft(exampleConfirmation);
    draft.setInLine(1, {names::total}, u"69.77"_s).makeLines(4);
    EXPECT_EQ(draft.lineCount(), 4);
    EXPECT_EQ(draft.text({names::total}), u"384.57"_s);
    EXPECT_EQ(draft.textInLine(3, {names::id}), u"4"_s);
    EXPECT_EQ(draft.textInLine(0, {names::total}), u"299.80"_s);
    EXPECT_NE(draft.makeNew().text({names::id}), u"a"_s);
}

TEST(VerifyGzip, packsWhatGzipUnpacks)
{
    const QByteArray text = QByteArray(exampleConfirmation).repeated(40);
    QProcess gzip;
    gzip.start(u"gzip"_s, {u"-dc"_s});
    gzip.write(till::verify::gzipped(text));
    gzip.closeWriteChannel();
    ASSERT_TRUE(gzip.waitForFinished());
    EXPECT_EQ(gzip.exitCode(), 0) << gzip.readAllStandardError().constData();
    EXPECT_EQ(gzip.readAllStandardOutput(), text);
}

TEST(VerifyForm, namesTheElementThatDoesNotFit)
{
    const auto objection = till::verify::answerform::objectionTo(
        u"acknowledgement"_s, "<RawCheck><id>a</id><status>ok</status></RawCheck>");
    ASSERT_TRUE(objection);
    EXPECT_EQ(objection->path, u"/RawCheck/status"_s);
    EXPECT_FALSE(till::verify::answerform::objectionTo(u"acknowledgement"_s,
                                                       "<RawCheck><id>a</id></RawCheck>"));
}

TEST(VerifyWire, sendsNothingBesideTheMarkedAddress)
{
    const till::verify::Wire wire(QUrl(u"http://127.0.0.1:1/test/"_s), {}, {}, 1);
    till::verify::Outgoing request;
    request.url = QUrl(u"http://127.0.0.1:1/shop/api"_s);
    EXPECT_THROW(static_cast<void>(wire.send(request)), till::Failure);
    EXPECT_THROW(wire.sendAndLeave(request), till::Failure);
    EXPECT_THROW(static_cast<void>(wire.sendTogether({request})), till::Failure);
}

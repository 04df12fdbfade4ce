// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/faults/operation.h"

#include "tests/scenario/faults/pair.h"

using namespace Qt::StringLiterals;
using till::PointsChoice;

namespace {

// The tests' sale: G = 200.00 + 30.00; discounts of 5 % are 10.00 and 1.50, 0.50 more brings the
// check to 218.00; 5 % of 189.50 and 28.50 are 9.48 and 1.43 points.
const QString sale = u"10.91,0.00,0.00,0.00"_s;
// 50.00 points fit on the first line, which may take 94.75; of 9.48 and 1.43 are left 168/218.
const QString saleWithPoints = u"8.41,50.00,0.00,0.00"_s;
// Half of the first line: half of its 50.00 comes back, half of its 7.31 is taken back.
const QString returnOfAPiece = u"0.00,0.00,25.00,3.66"_s;

constexpr qint64 points = 50'00;
constexpr qint64 otherPoints = 30'00;
constexpr qint64 twoPieces = 2000;
constexpr int goneForAWhile = 503;

const char* const precheck = "precheck";
const char* const paymentTry = "paymenttry";
const char* const checkConfirm = "checkconfirm";

constexpr bool cashierWaits = false;
constexpr bool delivered = true;
constexpr bool ofSale = false;
constexpr bool ofReturn = true;

void openSale(Pair& pair)
{
    pair.till.openSale();
}

void openWithCard(Pair& pair)
{
    pair.till.openSale();
    pair.till.presentCard();
}

void openWithFewerPoints(Pair& pair)
{
    openWithCard(pair);
    EXPECT_EQ(pair.till.desk().choosePoints(PointsChoice::sum(otherPoints)), otherPoints);
}

void openChanged(Pair& pair)
{
    openWithCard(pair);
    EXPECT_TRUE(pair.till.desk().request());
    pair.till.desk().changeQuantity(1, twoPieces); // the same, but it has to be asked again
}

void openRestored(Pair& pair)
{
    openWithCard(pair);
    EXPECT_TRUE(pair.till.desk().request());
    pair.till.desk().suspend();
    pair.till.restart();
    pair.till.desk().restore(u"last"_s);
    pair.till.desk().changeQuantity(1, twoPieces);
}

void openWithPoints(Pair& pair)
{
    pair.till.openPaidWithPoints();
}

void openReturn(Pair& pair)
{
    pair.till.openPaidWithPoints();
    pair.till.desk().close();
    pair.till.deliver();
    EXPECT_FALSE(pair.till.undelivered());
    pair.till.openReturn();
}

void openAskedReturn(Pair& pair)
{
    openReturn(pair);
    EXPECT_TRUE(pair.till.desk().request());
}

/// A fault of the connection cannot come between two requests, so the message has to be under way.
void beginDelivery(Pair& pair, const char* endpoint)
{
    if (!pair.server.isConnectionFault()) {
        return;
    }
    pair.server.failOnce(QString::fromLatin1(endpoint), goneForAWhile);
    pair.till.desk().close();
    pair.till.deliver();
    EXPECT_EQ(pair.till.undelivered()->lastStatus, goneForAWhile);
    pair.till.waitForNextAttempt();
}

void openWithPointsForConfirmation(Pair& pair)
{
    openWithPoints(pair);
    beginDelivery(pair, checkConfirm);
}

void openReturnForTry(Pair& pair)
{
    openAskedReturn(pair);
    beginDelivery(pair, paymentTry);
}

void openReturnForConfirmation(Pair& pair)
{
    openAskedReturn(pair);
    beginDelivery(pair, checkConfirm);
}

void meetWrongCredentials(Pair& pair)
{
    openWithPoints(pair);
    constexpr int unauthorized = 401;
    pair.server.failOnce(QString::fromLatin1(paymentTry), unauthorized);
    pair.till.desk().close();
    pair.till.deliver();
    EXPECT_EQ(pair.till.undelivered()->state, poshost::QueueState::Paused);
    pair.till.reauthorizeAndRetry();
}

void presentCard(Pair& pair)
{
    pair.timed("presentCard", [&] { pair.till.presentCard(); });
    pair.noteRefusal();
}

void request(Pair& pair)
{
    pair.timed("request", [&] { pair.till.desk().request(); });
    pair.noteRefusal();
}

void choosePoints(Pair& pair)
{
    pair.timed("choosePoints", [&] { pair.till.desk().choosePoints(PointsChoice::sum(points)); });
    pair.noteRefusal();
}

void close(Pair& pair)
{
    pair.close();
}

/// Closing never waits for the server: that is the delivery's business.
void closeAndDeliver(Pair& pair)
{
    if (!pair.till.undelivered()) {
        const int before = pair.server.struck();
        pair.close();
        EXPECT_EQ(pair.server.struck(), before) << "closing has asked the server";
    }
    pair.timed("deliver", [&] { pair.till.deliver(); });
}

void payAndClose(Pair& pair, bool well)
{
    if (well) {
        choosePoints(pair);
    }
    pair.close();
}

void justClose(Pair& pair, bool)
{
    pair.close();
}

void doNothing(Pair&, bool) {}

} // namespace

void PrintTo(const Operation& operation, std::ostream* out)
{
    *out << operation.name;
}

const std::vector<Operation>& operations()
{
    static const std::vector<Operation> all{
        {"identify",
         precheck,
         cashierWaits,
         ofSale,
         openSale,
         presentCard,
         payAndClose,
         {saleWithPoints},
         {}},
        {"request",
         precheck,
         cashierWaits,
         ofSale,
         openWithCard,
         request,
         payAndClose,
         {saleWithPoints},
         {}},
        {"spend-other-points",
         precheck,
         cashierWaits,
         ofSale,
         openWithFewerPoints,
         choosePoints,
         justClose,
         {saleWithPoints},
         {}},
        {"request-restored",
         precheck,
         cashierWaits,
         ofSale,
         openRestored,
         request,
         payAndClose,
         {saleWithPoints},
         {}},
        {"close-changed",
         precheck,
         cashierWaits,
         ofSale,
         openChanged,
         close,
         doNothing,
         {sale},
         {}},
        {"request-return",
         precheck,
         cashierWaits,
         ofReturn,
         openReturn,
         request,
         justClose,
         {saleWithPoints, returnOfAPiece},
         {saleWithPoints, returnOfAPiece}},
        {"deliver-sale-try",
         paymentTry,
         delivered,
         ofSale,
         openWithPoints,
         closeAndDeliver,
         doNothing,
         {saleWithPoints},
         {saleWithPoints}},
        {"deliver-sale-confirmation",
         checkConfirm,
         delivered,
         ofSale,
         openWithPointsForConfirmation,
         closeAndDeliver,
         doNothing,
         {saleWithPoints},
         {saleWithPoints}},
        {"deliver-reauthorized",
         paymentTry,
         delivered,
         ofSale,
         meetWrongCredentials,
         closeAndDeliver,
         doNothing,
         {saleWithPoints},
         {saleWithPoints}},
        {"deliver-return-precheck",
         precheck,
         delivered,
         ofReturn,
         openAskedReturn,
         closeAndDeliver,
         doNothing,
         {saleWithPoints, returnOfAPiece},
         {saleWithPoints, returnOfAPiece}},
        {"deliver-return-try",
         paymentTry,
         delivered,
         ofReturn,
         openReturnForTry,
         closeAndDeliver,
         doNothing,
         {saleWithPoints, returnOfAPiece},
         {saleWithPoints, returnOfAPiece}},
        {"deliver-return-confirmation",
         checkConfirm,
         delivered,
         ofReturn,
         openReturnForConfirmation,
         closeAndDeliver,
         doNothing,
         {saleWithPoints, returnOfAPiece},
         {saleWithPoints, returnOfAPiece}},
    };
    return all;
}

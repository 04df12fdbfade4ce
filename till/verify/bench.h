// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/verify/complaint.h"
#include "till/verify/counter.h"
#include "till/verify/draft.h"
#include "till/verify/reading.h"

#include <QStringList>

namespace till::verify {

/// Whose cards and which goods the server for testing knows.
struct Stock
{
    QString card;
    QString secondCard;
    QString emptyCard; ///< without points; may be empty
    QStringList codes; ///< of goods; at least one
};

/// Where a case is played: a cash desk with the real plug-in, a wire for what no cash desk would
/// send, and the server's answers as they are expected. What it books it takes back at the end of a
/// case. Belongs to one thread.
class Bench
{
public:
    Bench(Counter& cashDesk, const Wire& line, const Stock& given);

    Counter& counter() { return desk; }
    const Wire& wire() const { return cable; }
    const Ways& ways() const { return desk.ways(); }
    const QString& card() const { return stock.card; }
    const QString& secondCard() const { return stock.secondCard; }
    const QString& emptyCard() const { return stock.emptyCard; }

    // What is sold

    /// Three lines: pieces, a weight, and one piece that is cheap.
    Basket basket(const PointsChoice& points = {}) const;
    /// One line of that many pieces at that price, the first goods.
    Basket pieces(int count, qint64 priceKopecks, const PointsChoice& points = {}) const;
    /// Sold by the plug-in, not sent. @throws NotTried where the plug-in has no answer to go by
    Papers sold(const Basket& basket);
    /// The same with points. @throws NotTried where the server lets none be spent
    Papers soldWithPoints(const Basket& basket);
    /// Sent whole by hand. @throws NotTried where the server does not take it
    Papers booked(const Basket& basket);
    Papers booked(const Papers& papers);
    /// A return by the plug-in of that much of lines, not sent. @throws NotTried
    Papers takenBack(const Papers& sale, const QHash<int, qint64>& thousandths);
    /// The same, sent. @throws NotTried
    Papers returned(const Papers& sale, const QHash<int, qint64>& thousandths);
    /// The plug-in's request for a sale, of a check that was never seen.
    Draft freshRequest();

    // What is sent

    Reply precheck(const QByteArray& body) { return sent(ways().precheck, body); }
    Reply pay(const QByteArray& body) { return sent(ways().paymentTry, body); }
    Reply confirm(const QByteArray& body) { return sent(ways().confirm, body); }
    Outgoing outgoing(const QUrl& url, const QByteArray& body) const;
    Reply send(const Outgoing& request);
    QList<Reply> sendTogether(const QList<Outgoing>& requests);
    QList<Reply> sendKept(const QList<Outgoing>& requests);
    /// May have been booked, whatever was answered.
    void mayBeBooked(const Papers& papers);
    /// What the card holds. @throws NotTried where no answer says it
    qint64 balance(const QString& card);
    /// The answer to a pre-check. @throws NotTried where there is none
    Reading answered(const QByteArray& request);

    // What is expected

    void expectStatus(const Reply& reply, const QList<int>& wanted);
    /// Refused with that status. What is refused in words behind a 200 breaks `status-tells`.
    void expectRefusal(const Reply& reply, int wanted);
    void expectAmount(const QString& path, qint64 expected, std::optional<qint64> got);
    void expectText(const QString& path, const QString& expected, const QString& got);
    void expectThat(bool holds, const QString& path, const QString& expected, const QString& got);
    /// The balance now, against the one before. One that changes by being asked for breaks
    /// `precheck-books-nothing`, whatever was tried. @param change expected
    void expectBalance(const QString& card, qint64 before, qint64 change);
    /// For complaints: the exchange that the next expectation is about, instead of the last one.
    void lookAt(const Exchange& exchange) { last = exchange; }
    [[noreturn]] static void cannot(const QString& reason) { throw NotTried{reason}; }

    // What is left

    /// Takes back what was booked since the last call. @return a sentence for each check that
    /// stays in the books
    QStringList cleanUp();
    const QList<Exchange>& trail() const { return exchanges; }

private:
    struct OpenSale
    {
        Papers papers;
        QHash<int, qint64> returned; ///< by the till, sent or not
        bool certain = false;        ///< that it is booked
    };

    Reply sent(const QUrl& url, const QByteArray& body) { return send(outgoing(url, body)); }
    void note(const Exchange& exchange);
    Line lineOf(int position, qint64 priceKopecks, qint64 thousandths, bool fractional) const;
    OpenSale* openSale(const QString& id);
    bool takeBackRest(const OpenSale& sale);

    Counter& desk;
    const Wire& cable;
    const Stock stock;
    QByteArray pattern;
    Exchange last;
    QList<Exchange> exchanges;
    QList<OpenSale> sales;
    QList<Papers> returns; ///< whose confirmation the server has not taken
};

} // namespace till::verify

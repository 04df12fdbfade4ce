// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/auditor.h"

#include "simulator/ledger/ledger.h"
#include "tests/scenario/year/tillbox.h"
#include "tests/scenario/year/violation.h"
#include "till/checks/amount.h"
#include "till/checks/checkstore.h"

using namespace Qt::StringLiterals;
using tests::Books;
using tests::Entry;
using tests::Points;
using till::amount::moneyText;

namespace year {
namespace {

QString figures(const Points& points)
{
    return u"earned %1, spent %2, given back %3, taken back %4"_s.arg(
        moneyText(points.earned), moneyText(points.spent), moneyText(points.givenBack),
        moneyText(points.takenBack));
}

void requireEqual(const QString& card, qint64 expected, qint64 actual, const QString& what)
{
    if (expected != actual) {
        throw Violation(u"card %1: by the tills' closed checks it must hold %2, %3 %4"_s.arg(
            card, moneyText(expected), what, moneyText(actual)));
    }
}

} // namespace

Auditor::Auditor(Books& tillBooks, const QString& serverDatabase,
                 const std::vector<std::unique_ptr<TillBox>>& allTills)
    : books(tillBooks), server(serverDatabase, simulator::Database::Open::ExistingOnly),
      tills(allTills)
{}

void Auditor::check()
{
    takeBookings();
    takeDeliveries();
    checkBalances();
}

void Auditor::takeBookings()
{
    poshost::Statement rows(server,
                            u"SELECT sequence, check_id, card, earned, spent, given_back, "
                            "taken_back FROM ledger WHERE sequence > ? ORDER BY sequence"_s);
    rows.bind(lastSequence);
    while (rows.next()) {
        lastSequence = rows.value(0).toLongLong();
        const QString check = rows.value(1).toString();
        const QString card = rows.value(2).toString();
        const Points booked{rows.value(3).toLongLong(), rows.value(4).toLongLong(),
                            rows.value(5).toLongLong(), rows.value(6).toLongLong()};
        const Entry* known = books.find(check);
        if (known == nullptr || known->booked) {
            throw Violation(
                u"card %1: by the tills' closed checks it must hold %2, the server booked check "
                "%3 (%4), which %5, and makes it %6"_s.arg(
                    card, moneyText(books.expected(card)), check, figures(booked),
                    known == nullptr ? u"no till has closed"_s : u"it had booked before"_s,
                    moneyText(books.expected(card) + booked.change())));
        }
        if (known->card != card || known->points != booked) {
            throw Violation(u"check %1: the till closed it for card %2 with %3, the server booked "
                            "it for card %4 with %5"_s.arg(
                                check, known->card, figures(known->points), card, figures(booked)));
        }
        books.setBooked(check);
    }
}

void Auditor::takeDeliveries()
{
    for (const auto& till : tills) {
        const QStringList pending = books.undelivered(till->name());
        for (const QString& check : pending) {
            const QString state = till->messageState(check);
            if (state == u"delivered"_s || state == u"removed"_s) {
                books.setDelivered(check);
            }
        }
    }
}

void Auditor::checkBalances()
{
    poshost::Statement rows(server, u"SELECT number, opening, balance FROM cards"_s);
    while (rows.next()) {
        const QString card = rows.value(0).toString();
        if (rows.value(1).toLongLong() != books.opening(card)) {
            throw Violation(u"card %1 began with %2, the server says %3"_s.arg(
                card, moneyText(books.opening(card)), moneyText(rows.value(1).toLongLong())));
        }
        requireEqual(card, books.expected(card), rows.value(2).toLongLong(), u"it holds"_s);
    }
}

Remainder Auditor::checkRemainder()
{
    constexpr int alreadyBooked = 409;
    Remainder remainder;
    for (const auto& till : tills) {
        QStringList stuck;
        const QList<LeftMessage> messages = till->left();
        for (const LeftMessage& message : messages) {
            const Entry* entry = books.find(message.check);
            if (entry == nullptr) {
                throw Violation(u"till %1 has a message of no closed check"_s.arg(till->name()));
            }
            const bool unclear =
                message.isParked && message.lastStatus == alreadyBooked && entry->booked;
            if (!unclear && !stuck.contains(message.waitsFor)) {
                throw Violation(u"check %1 of card %2 was never delivered: %3, HTTP %4"_s.arg(
                    message.check, entry->card, message.isParked ? u"parked"_s : u"waiting"_s,
                    QString::number(message.lastStatus)));
            }
            ++(unclear ? remainder.unclear : remainder.behind);
            stuck.append(message.check);
        }
    }
    if (books.unbooked() > remainder.behind) {
        throw Violation(u"%1 confirmed checks are neither booked nor in a queue"_s.arg(
            books.unbooked() - remainder.behind));
    }
    return remainder;
}

void Auditor::checkEverything()
{
    check();
    checkLedger();
    for (const auto& till : tills) {
        checkTill(*till);
    }
}

/// What the cards hold = what they began with + earned - spent + given back - taken back.
void Auditor::checkLedger()
{
    const std::vector<simulator::Account> accounts = simulator::Ledger(server).accounts();
    for (const simulator::Account& account : accounts) {
        requireEqual(account.card, account.expected(), account.balance,
                     u"by the server's ledger; it holds"_s);
        requireEqual(account.card, books.expected(account.card), account.expected(),
                     u"the server's ledger adds up to"_s);
    }
}

/// The till's file says of every closed check what the till said when it closed it.
void Auditor::checkTill(TillBox& till)
{
    till.start();
    int confirmed = 0;
    till.checks().forEachClosed([&](const till::Check& check) {
        if (!check.confirmed) {
            return;
        }
        ++confirmed;
        const Entry* known = books.find(check.id());
        const Points kept = Points::of(check);
        if (known == nullptr || known->till != till.name() || known->points != kept) {
            throw Violation(u"check %1: till %2 keeps it with %3, it was closed with %4"_s.arg(
                check.id(), QString::number(till.name()), figures(kept),
                known == nullptr ? u"nothing"_s : figures(known->points)));
        }
    });
    till.stop();
    if (confirmed != books.closedAt(till.name())) {
        throw Violation(u"till %1 keeps %2 confirmed checks and has closed %3"_s.arg(till.name())
                            .arg(confirmed)
                            .arg(books.closedAt(till.name())));
    }
}

} // namespace year

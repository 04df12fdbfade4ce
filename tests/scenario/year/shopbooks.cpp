// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/shopbooks.h"

#include "simulator/ledger/ledger.h"
#include "till/checks/amount.h"
#include "till/checks/cardnumber.h"

using namespace Qt::StringLiterals;
using till::amount::moneyText;

namespace year {
namespace {

QString lineOf(const QString& card, const tests::Points& points)
{
    return u"card %1, earned %2, spent %3, given back %4, taken back %5"_s.arg(
        card.isEmpty() ? u"none"_s : till::cardnumber::shortened(card), moneyText(points.earned),
        moneyText(points.spent), moneyText(points.givenBack), moneyText(points.takenBack));
}

} // namespace

void ShopBooks::take(const till::Check& check, const QString& till)
{
    insert(check.id(),
           lineOf(check.cardNumber(), tests::Points::of(check)) +
               u", goods %1, discount %2, money %3, till %4, confirmed: %5"_s
                   .arg(moneyText(check.goodsKopecks()), moneyText(check.discountKopecks()),
                        moneyText(check.moneyKopecks()), till)
                   .arg(check.confirmed));
}

void ShopBooks::take(const tests::Entry& confirmed)
{
    insert(confirmed.check, lineOf(confirmed.card, confirmed.points));
}

void ShopBooks::take(const simulator::Booking& booking)
{
    insert(booking.checkId, lineOf(booking.cardNumber, tests::Points::of(booking)));
}

/// One that is there twice agrees with nobody.
void ShopBooks::insert(const QString& check, const QString& line)
{
    checks[check] += checks.contains(check) ? u" and once more: "_s + line : line;
}

QStringList ShopBooks::differences(const ShopBooks& others) const
{
    constexpr qsizetype most = 5;
    QStringList found;
    QMap<QString, QString> rest = others.checks;
    for (auto it = checks.cbegin(); it != checks.cend(); ++it) {
        const QString other = rest.take(it.key());
        if (other != *it) {
            found.append(u"check %1: %2: %3; %4: %5"_s.arg(it.key(), name, *it, others.name,
                                                           other.isEmpty() ? u"nothing"_s : other));
        }
    }
    for (auto it = rest.cbegin(); it != rest.cend(); ++it) {
        found.append(u"check %1: %2: nothing; %3: %4"_s.arg(it.key(), name, others.name, *it));
    }
    return found.first(std::min(found.size(), most));
}

QStringList wrongBalances(const tests::Books& books,
                          const std::vector<simulator::Account>& accounts)
{
    QStringList found;
    for (const simulator::Account& account : accounts) {
        const qint64 due = books.inTheEnd(account.card);
        if (account.opening != books.opening(account.card) || account.balance != due ||
            account.expected() != due) {
            found.append(u"card %1: by the tills' closed checks it must hold %2, it holds %3, the "
                         "server's ledger adds up to %4"_s.arg(account.card, moneyText(due),
                                                               moneyText(account.balance),
                                                               moneyText(account.expected())));
        }
    }
    return found;
}

} // namespace year

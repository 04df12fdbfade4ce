// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/books.h"
#include "till/checks/check.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace simulator {
struct Account;
struct Booking;
} // namespace simulator

namespace year {

/// What one of those who keep the books of a shop has of its checks: a line of card, points and
/// money each, to be held against those of another one. Of a card its last digits count: some have
/// been told to forget the rest.
class ShopBooks
{
public:
    /// @param keeper who it is, for sentences
    explicit ShopBooks(QString keeper) : name(std::move(keeper)) {}

    /// A check as a till has closed it, or keeps it, or has handed it over.
    void take(const till::Check& check, const QString& till);
    /// The same by its points alone, for what the loyalty server knows of it.
    void take(const tests::Entry& confirmed);
    /// What the loyalty server has booked.
    void take(const simulator::Booking& booking);

    qsizetype size() const { return checks.size(); }
    /// Sentences about what they do not have in common, with both sums; at most five.
    QStringList differences(const ShopBooks& others) const;

private:
    void insert(const QString& check, const QString& line);

    QString name;
    QMap<QString, QString> checks;
};

/// What cards hold by the server against what they must hold when all checks are delivered.
QStringList wrongBalances(const tests::Books& books,
                          const std::vector<simulator::Account>& accounts);

} // namespace year

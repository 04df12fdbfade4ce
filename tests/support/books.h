// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

namespace simulator {
struct Booking;
}

namespace tests {

/// What one check does to its card, in kopecks.
struct Points
{
    qint64 earned = 0;
    qint64 spent = 0;
    qint64 givenBack = 0;
    qint64 takenBack = 0;

    static Points of(const till::Check& closed);
    static Points of(const simulator::Booking& booking);

    qint64 change() const { return earned - spent + givenBack - takenBack; }
    Points& operator+=(const Points& other);

    friend bool operator==(const Points&, const Points&) = default;
};

/// What the tills' closed checks say of one confirmed check.
struct Entry
{
    QString check;
    int till = 0;
    QString card;
    bool isReturn = false;
    Points points;
    bool booked = false;    ///< the server has it
    bool delivered = false; ///< the till's queue says that the server has it

    /// Whether the card's balance must show it.
    bool counts() const { return booked || delivered; }
};

/// What all cards must hold, kept by itself from the checks as the tills closed them; no figure of
/// the server goes in but which checks it has.
class Books
{
public:
    void open(const QString& card, qint64 opening) { opened[card] = opening; }
    /// Takes a check that a till has closed; one without a confirmation counts for nothing.
    /// @return false when it was taken before: the till has closed it twice
    bool take(const till::Check& closed, int till);

    /// The entry of a check; null when no till has closed it with a confirmation.
    const Entry* find(const QString& check) const;
    const QHash<QString, Entry>& all() const { return entries; }
    void setBooked(const QString& check);
    void setDelivered(const QString& check);
    /// The checks of a till that are not known to be delivered, in the order of closing.
    QStringList undelivered(int till) const { return pending.value(till); }

    /// Those that were opened.
    QStringList cards() const { return opened.keys(); }
    /// Those of closed checks.
    QStringList usedCards() const { return closed.keys(); }
    qint64 opening(const QString& card) const { return opened.value(card); }
    /// The balance that the card must have now.
    qint64 expected(const QString& card) const { return opened.value(card) + counted.value(card); }
    /// What the card will hold when everything is delivered.
    qint64 inTheEnd(const QString& card) const { return opened.value(card) + closed.value(card); }
    /// How many checks a till has closed with a confirmation.
    int closedAt(int till) const { return closedChecks.value(till); }
    int size() const { return static_cast<int>(entries.size()); }
    int unbooked() const { return size() - bookedChecks; }
    /// The sums over all checks that the server has.
    const Points& totals() const { return total; }

private:
    void count(Entry& entry, bool Entry::*mark);

    QMap<QString, qint64> opened;
    QHash<QString, qint64> counted;
    QHash<QString, qint64> closed;
    QHash<QString, Entry> entries;
    QMap<int, QStringList> pending;
    QHash<int, int> closedChecks;
    Points total;
    int bookedChecks = 0;
};

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

class CheckStore;
struct Check;

/// What one closed check did to its card's points, in kopecks.
struct LedgerRow
{
    QString check;
    /// The card's last four digits, "****0017".
    QString card;
    qint64 earned = 0;
    qint64 spent = 0;
    qint64 givenBack = 0;
    qint64 takenBack = 0;
};

/// The points that the till has recorded for its closed checks with a confirmation, in the order of
/// the checks' times, to the second, and identifiers. Sorted in a temporary file and written in
/// parts: however many checks there are, they take no memory.
class Ledger
{
public:
    /// Takes each part when it is made.
    using Write = std::function<void(const QString& part)>;

    /// Reads the closed checks.
    /// @param opened the checks' database; must live longer
    /// @throws BasicException when it cannot be read or nothing can be written for sorting
    Ledger(CheckStore& store, poshost::Database& opened);
    /// Hands checks over, one more than once too: it counts once.
    using Source = std::function<void(const std::function<void(const Check&)>& take)>;
    /// @param source of the closed checks
    /// @throws what the source throws, too; the database is then as it was
    Ledger(const Source& source, poshost::Database& opened);
    /// Lets go of the temporary file.
    ~Ledger();
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;

    /// Aligned, with a line of totals.
    /// @param width how many characters fit on a line
    void writeTable(int width, const Write& write) const;
    /// check,card,earned,spent,givenBack,takenBack; amounts with two decimals.
    void writeCsv(const Write& write) const;
    /// An array of objects with the same fields; the amounts are texts, exact to the kopeck.
    void writeJson(const Write& write) const;

private:
    void read(const Source& source);
    void letGo();
    enum class Order
    {
        AsMade,      ///< of two checks of the same second the one that was made first
        AsInTheBooks ///< by their identifiers: a server's books have no number that all tills share
    };
    void forEach(Order order, const std::function<void(const LedgerRow&)>& take) const;

    poshost::Database& database;
    LedgerRow total;
    QStringList widest; ///< of each column
};

} // namespace till

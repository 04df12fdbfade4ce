// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QSharedPointer>
#include <QString>

#include <functional>
#include <limits>
#include <optional>

namespace poshost {
class Database;
} // namespace poshost

namespace till {

/// A row of the list of checks.
struct CheckRow
{
    QString id;
    int number = 0;
    /// open, suspended, closed, abandoned, or left in the store; anything else is damaged
    QString state;
    bool isReturn = false;
    QDateTime updatedAt;
};

/// What is stored of a check that has content: open and abandoned ones have none.
struct StoredCheck
{
    QString id;
    QString state;
    std::optional<qint64> message; ///< that confirms it, while the queue has it
    QByteArray data;               ///< as checkcodec reads it, if it is not damaged
};

/// Checks that customers wait for, or have forgotten.
struct SuspendedChecks
{
    int count = 0;
    QString oldest; ///< identifier
    QDateTime since;
    int onTheWay = 0;        ///< to the store, or from there: it has not said where they are
    QDateTime onTheWaySince; ///< of those that go there the first; invalid without one
};

/// How old a sale may be whose goods are taken back.
struct ReturnTerms
{
    std::optional<int> days;  ///< since the sale; nothing: any
    bool fromArchive = false; ///< whatever its age, and from the archive too
};

/// The till's checks in its database and in the archive beside it. Every operation throws
/// BasicException "databaseError" when the database fails and leaves the file as it was; one that
/// reads a check throws Failure when what is stored of it is damaged.
class CheckStore
{
public:
    explicit CheckStore(const QSharedPointer<poshost::Database>& opened) : database(opened) {}

    /// Takes the next check number.
    int takeNumber();
    /// The number that takeNumber would take; takes none.
    int nextNumber();
    /// Notes that a check was opened. What is on it is not kept before it is suspended or closed.
    void noteOpen(const Check& check);
    /// Keeps the whole check for another process. It stays kept until it is closed or abandoned.
    /// @throws Failure when it is closed or abandoned
    void suspend(const Check& check);
    /// Keeps a check that comes from elsewhere as a suspended one. One that is open, suspended or
    /// closed here stays as it is.
    void takeIn(const Check& check);
    /// @return false: it is closed or abandoned already
    bool abandon(const Check& check);
    /// Closes the check and does what confirms it, both or neither: what confirm puts into the
    /// queue becomes durable together with the closed check, and a return's message waits for that
    /// of its sale.
    /// @throws Failure when another till has closed the check, or a return of the same sale, in the
    /// meantime; whatever confirm throws
    void close(const Check& check, const std::function<void()>& confirm);

    /// Whether a check that is closed without a message is noted for the store of the shop, in the
    /// same transaction: nothing else would take it there. At first it is not.
    void noteSilent(bool isNoted) { notesSilent = isNoted; }

    /// A suspended check by its identifier, or with "last" the one suspended last.
    /// @throws Failure when there is none
    Check loadSuspended(const QString& which);
    /// Whether loadSuspended would find one.
    bool hasSuspended(const QString& which);
    /// How many checks are suspended, and the one that was left alone longest.
    SuspendedChecks suspended();
    /// A closed sale by its identifier or number, or with "last" the one closed last. The archive
    /// is asked where the database has none.
    /// @throws Failure (Usage) when there is none, or several have the number
    Check findSale(const QString& which);
    /// The same for a return. @throws Failure (Usage) also when the terms do not allow it any more
    Check findSaleToReturn(const QString& which);
    /// The same in the database, and in the archive where the terms say so. @return nothing when
    /// there is none
    std::optional<Check> findOwnSaleToReturn(const QString& which);
    /// @throws Failure (Usage) when the terms do not allow the sale's return any more
    void requireReturnable(const Check& sale) const;
    /// The state of a check in the database; empty when it is not there.
    QString stateOf(const QString& id);
    /// What findSaleToReturn goes by; at first any sale of the database.
    void setReturnTerms(const ReturnTerms& allowed) { terms = allowed; }
    /// A closed check of any kind, named in the same way.
    Check findClosed(const QString& which);
    /// Whether findClosed would find one, or several.
    bool hasClosed(const QString& which);
    /// The closed returns of a sale.
    QList<Check> returnsOf(const QString& saleId);
    /// Whether a closed check's confirmation has been delivered.
    bool isDelivered(const QString& id);

    /// The message that confirms a check; nothing when there is none or it is removed already.
    std::optional<qint64> messageOf(const QString& id);
    /// The card of the check that a message confirms; empty when no closed check knows it.
    QString cardOfMessage(qint64 messageId);

    /// The checks that were changed last, the newest first, and behind them those of the archive.
    /// @param most how many at most
    /// @param before identifier of the check to go on behind; empty: from the newest
    /// @throws Failure (Usage) when there is no such check
    QList<CheckRow> list(int most = std::numeric_limits<int>::max(), const QString& before = {});
    /// The same one by one, for any number of checks.
    /// @param take returns false when it wants no more
    void forEachListed(const std::function<bool(const CheckRow&)>& take,
                       const QString& before = {});
    /// Hands every closed check over, in no particular order.
    void forEachClosed(const std::function<void(const Check&)>& take);
    /// Hands over what is stored of every check with content, damaged or not, sorted by identifier.
    void forEachStored(const std::function<void(const StoredCheck&)>& take);
    /// Gives a check another content; state, times and messages stay.
    void rewrite(const Check& check);

private:
    Check find(const QString& which, bool onlySales);
    std::optional<Check> findHere(const QString& which, bool onlySales);
    bool isHere(const QString& id);
    static QString laneOf(const Check& check);
    int behindLargestNumber();
    void requireKnownStates(const QString& id);
    std::optional<qint64> changeOf(const QString& id);
    bool listHere(const std::function<bool(const CheckRow&)>& take, qint64 beforeChange);
    void listArchived(const std::function<bool(const CheckRow&)>& take, const QString& before);
    int countReturns(const QString& saleId);
    bool changeState(const Check& check, const QString& state, const QVariant& data,
                     const QVariant& message);

    QSharedPointer<poshost::Database> database;
    ReturnTerms terms;
    bool notesSilent = false;
    QHash<QString, int> archivedReturns; ///< of archived sales, as returnsOf has found them
};

} // namespace till

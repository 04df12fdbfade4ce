// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/storeclient.h"

#include <QDeadlineTimer>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

namespace orvastore {

/// A check as the store keeps it.
struct KeptCheck
{
    QString identifier;       ///< the check's own, unique over all tills
    QString till;             ///< that closed it
    qint64 number = 0;        ///< of the check at its till
    QDateTime closedAt;       ///< as that till's clock had it
    QString saleIdentifier;   ///< of a return: the check that it returns; empty otherwise
    bool isDelivered = false; ///< whether the loyalty server has all its messages
    QByteArray content;       ///< the check as the till keeps it
};

/// A sale whose goods are to be taken back, as the store knows it.
struct SaleToReturn
{
    StoreResult result;     ///< Done: the store has answered, also when it has no such sale
    QList<KeptCheck> sales; ///< none, the one, or several where several have the number
    /// Of the one sale: what was taken back of it at any till, and what is reserved, in the order
    /// in which the store got to know of it.
    QList<KeptCheck> returns;
};

/// What a reservation is refused with while a return that it was reckoned with is itself about to
/// close: asking again a moment later may have another end.
inline constexpr char undecidedReturn[] = "store.returnUndecided";

/// A return that is about to close.
struct Reservation
{
    QString shop;              ///< whose return it is
    QString till;              ///< the till's name
    QString identifier;        ///< of the return: the key by which reserving is repeated
    qint64 number = 0;         ///< of the return at its till
    QString saleIdentifier;    ///< whose goods come back
    QList<ReturnedLine> lines; ///< what comes back
    /// Identifiers of the returns that the amounts of this one were reckoned with: when the store
    /// knows others of the same sale, it refuses.
    QStringList known;
    QByteArray content; ///< the return as the till keeps it
};

/// A suspended check that any till of the shop may take up.
struct LeftCheck
{
    QString shop;       ///< whose check it is
    QString till;       ///< that left it
    QString identifier; ///< the check's own
    qint64 number = 0;  ///< of the check at that till
    QDateTime leftAt;   ///< as that till's clock had it
    QString mark;       ///< of this leaving alone: the key by which it is repeated
    QByteArray content; ///< the check as the till keeps it, with the loyalty system's state
};

/// How taking a suspended check up has ended.
struct TakeUp
{
    StoreResult result;             ///< Refused: there is none, or another till has it
    std::optional<LeftCheck> check; ///< with Done
    /// With Refused: the store has looked, and nothing was taken up with this token or will be
    /// got with it again.
    bool isOver = false;
};

/// What the tills of a shop share beside handing over. One object belongs to one thread, but for
/// interrupt(). No operation throws; each blocks up to the time-out of the settings in all, the
/// connecting included, and what it has left undone can be repeated.
class SharedBooks
{
public:
    virtual ~SharedBooks() = default;

    /// Takes the settings; connects when it is first asked. Does not block.
    virtual void open(const StoreSettings& settings) = 0;
    /// Makes every operation, now and from now on, return within about a second. Any thread; does
    /// not wait.
    virtual void interrupt() = 0;
    /// Lets several operations that somebody waits for end by the same time; each ends by its own
    /// time-out all the same.
    /// @param end from now on, until it is set again; at first never
    virtual void setEnd(const QDeadlineTimer& /*end*/) {}
    /// What is asked from now on blocks no longer than this altogether, whatever lies between, and
    /// is Unreachable when the time is used up. Does not block.
    virtual void allow(std::chrono::milliseconds /*altogether*/) {}

    /// Finds a sale of the shop and what was taken back of it. Keeps nothing.
    /// @param which its identifier, or its number at whichever till
    virtual SaleToReturn saleToReturn(const QString& shop, const QString& which) = 0;
    /// Keeps what a return takes for it until the return is handed over or released. Safe to
    /// repeat.
    /// @return Refused, as a conflict, with a sentence that names the other return when the store
    /// knows one that the reservation does not, or that is not closed yet (undecidedReturn), or
    /// when more would come back than was sold; or that the return was released
    virtual StoreResult reserve(const Reservation& reservation) = 0;
    /// Gives back what a return that will not close has reserved; what was handed over stays. Safe
    /// to repeat, and Done when there is nothing; the return cannot be reserved again.
    virtual StoreResult release(const QString& shop, const QString& identifier) = 0;

    /// Takes for good what a closed return has reserved, handed over or not. Safe to repeat, and
    /// Done when there is nothing.
    virtual StoreResult settleReturn(const QString& shop, const QString& identifier) = 0;

    /// Keeps a closed check that has no message, as StoreClient::handOver keeps those that have
    /// one: in one transaction, safe to repeat by its identifier. What a return has reserved is
    /// taken for good.
    /// @param check without messages
    /// @return Refused, as a conflict, when more would come back than was sold
    virtual StoreResult keep(const HandedCheck& check) = 0;

    /// Leaves a suspended check for any till. Safe to repeat by its mark, also when another till
    /// has taken it up or closed it meanwhile.
    /// @return Refused when another till has the check, or it is closed
    virtual StoreResult leave(const LeftCheck& check) = 0;
    /// Takes a suspended check up, so that no other till can.
    /// @param which its identifier, or "last" for the one that was left last
    /// @param till who takes it
    /// @param token of this take-up alone: repeating it with the same one gives the same check
    virtual TakeUp takeUp(const QString& shop, const QString& which, const QString& till,
                          const QString& token) = 0;
    /// Forgets the content of a check that was taken up with this token and is durable at its till.
    /// Safe to repeat.
    /// @return Refused when the check was released to another till meanwhile
    virtual StoreResult settleTakeUp(const QString& shop, const QString& token) = 0;
    /// Hands over the suspended checks that wait in the store, the one that was left first at
    /// first.
    virtual StoreResult forEachLeft(const QString& shop,
                                    const std::function<void(const LeftCheck&)>& take) = 0;

    /// Hands over checks of the shop, the one closed last at first, in parts of bounded size.
    /// @param before identifier of the check to go on behind; empty: from the newest
    /// @param take returns false when it wants no more
    virtual StoreResult forEachCheck(const QString& shop, const QString& before,
                                     const std::function<bool(const KeptCheck&)>& take) = 0;
    /// Finds closed checks of any kind.
    /// @param which an identifier, or a number at whichever till
    /// @param found receives none, the one, or several
    virtual StoreResult findChecks(const QString& shop, const QString& which,
                                   QList<KeptCheck>& found) = 0;
    /// Gives a check whose messages are all delivered another content, and empties what the store
    /// keeps of these messages.
    /// @return Refused while one is not delivered, and when there is no such check
    virtual StoreResult rewrite(const QString& shop, const QString& identifier,
                                const QByteArray& content) = 0;
};

} // namespace orvastore

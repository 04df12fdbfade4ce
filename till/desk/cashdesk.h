// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/checks/checkfile.h"

#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

class BasicLoyaltySystem;
class Session;

namespace till {

class CheckStore;
class SharedReturns;
class SuspendedSharing;
struct SaleOfShop;

/// The cashier's operations on one check after another, in the order that the loyalty contract
/// asks for. One check at a time. Only presentCard and request may wait for a server, and
/// choosePoints and close where they must request again; each waits once. Who does several of them
/// at one wish of the cashier opens an OperationBudget around them, so that together they wait no
/// longer than one.
///
/// Every operation throws Failure when it cannot be done, the database being locked or full
/// included; the check then stays as it was, on the screen and in the file. What goes wrong on the
/// loyalty system's side stops no sale: the check goes on without it and a notice says why.
class CashDesk
{
public:
    CashDesk(BasicLoyaltySystem& loyaltySystem, CheckStore& checkStore, Session& cashierSession);
    /// Leaves.
    ~CashDesk();
    /// Lets suspended checks go through the store. @param through null: there is none; must live
    /// longer
    void share(SuspendedSharing* through) { sharing = through; }
    /// Has somebody told how long each request to the loyalty system took, answered or not.
    void onRequest(const std::function<void(std::chrono::microseconds)>& told) { tellTime = told; }
    CashDesk(const CashDesk&) = delete;
    CashDesk& operator=(const CashDesk&) = delete;

    /// Takes returns of other tills' sales too, and keeps what other tills take back in mind. To be
    /// called before the first check.
    /// @param returns must live longer
    void share(SharedReturns& through) { returns = &through; }

    /// Opens a sale. Its card, if the file names one, is not presented yet.
    void openSale(const CheckFile& file);
    /// Opens a sale that is only looked at: it has the number that the next check will have, is in
    /// no list, and can be asked about and abandoned, but neither suspended nor closed.
    void openTrial(const CheckFile& file);
    /// Opens a return against a closed sale: of this till, or of any where tills share a store.
    void openReturn(const CheckFile& file);
    /// Identifies the customer's card. @return false when the loyalty system knows no such card or
    /// cannot be reached: the sale goes on without it.
    bool presentCard(const QString& number);
    /// Changes a line of a sale and takes the loyalty system's impacts off the check: it is asked
    /// again before the check closes.
    void changeQuantity(int position, qint64 thousandths);
    void changePrice(int position, qint64 kopecks);
    /// Asks the loyalty system for its effect on the check as it stands, and applies it, with the
    /// points chosen before. For a return only when its sale's confirmation has been delivered.
    /// @return false when there is no effect to be had
    bool request();
    /// Pays with points. A second choice begins with a new request.
    /// @return the points placed, in kopecks
    qint64 choosePoints(const PointsChoice& choice);
    /// Takes cash.
    void tender(qint64 kopecks);
    /// Closes the check and queues its confirmation, both or neither. A sale without cash counts
    /// as paid exactly. A return that tills share is reserved in the store first, which is waited
    /// for no longer than its time-out. When this throws the check is still open and can be closed
    /// again: its confirmation will be byte for byte the same.
    /// @return the closed check
    Check close();
    /// Keeps the check for later; another process may restore it.
    /// @return its identifier
    QString suspend();
    /// Leaves the check for whichever till of the shop takes it up. A store that does not take it
    /// is told in a notice: then it is suspended here.
    /// @return its identifier
    QString suspendToStore();
    /// Takes up a suspended check by its identifier, or with "last" the one suspended last. One
    /// that is not here comes out of the store, where there is one.
    void restore(const QString& which);
    /// Gives the check up. When another till has closed or abandoned it meanwhile, it is only taken
    /// off this desk, and a notice says so.
    void abandon();
    /// Ends the cashier's work: a check that is still open is abandoned, or stays suspended when it
    /// was restored.
    void leave();

    bool hasCheck() const { return check.has_value(); }
    /// The open check. @throws Failure when there is none
    const Check& current() const;
    /// The points that may be spent on the open check, in kopecks.
    qint64 availablePoints();
    /// The sentences for the cashier since the last call.
    QStringList takeNotices();

    /// The change to hand out; 0 when the check is paid exactly.
    static qint64 changeKopecks(const Check& check);

private:
    Check& requireCheck();
    Check& requireSale();
    void requireNone() const;
    void takeUp(Check&& taken);
    void layDown();
    Line& requireLine(int position);
    void requireCountable(const Line& line, qint64 newSum) const;
    void lineChanged();
    bool ask();
    bool callRequest(QString& reason);
    bool timedRequest();
    void takeOver();
    void spend();
    qint64 place(qint64 wanted);
    void refuse(const QString& reason, const QString& words);
    void forgetRefusal();
    void showTender();
    void requireFullTender();
    void prepareRetry();
    void requireSuspendable();
    SaleOfShop saleOfThisTill(const QString& which);
    Check returnOf(const CheckFile& file);
    bool isSaleDelivered();
    void takeSharedNotices();
    template <typename LayDown>
    void settle(const LayDown& systemLaysDown);
    void rollBack();
    bool giveUp();
    QString lastError() const;

    BasicLoyaltySystem& loyalty;
    CheckStore& store;
    Session& session;
    SuspendedSharing* sharing = nullptr;
    SharedReturns* returns = nullptr;
    std::optional<Check> check;
    bool restored = false;
    bool isTrial = false;
    QStringList notices;
    std::function<void(std::chrono::microseconds)> tellTime;
};

} // namespace till

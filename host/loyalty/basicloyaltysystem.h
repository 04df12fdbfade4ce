// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/tr.h"
#include "host/document/abstractdocument.h"
#include "host/document/bonusimpact.h"
#include "host/document/documentbonusrecord.h"
#include "host/hostexport.h"
#include "host/loyalty/basicplugin.h"
#include "host/loyalty/cardnumberinputdata.h"
#include "host/loyalty/documentwatcher.h"
#include "host/loyalty/ecardmode.h"
#include "host/loyalty/ecardnumbertype.h"
#include "host/loyalty/ecoupon.h"
#include "host/loyalty/loyaltysystemoption.h"

#include <QList>
#include <QMap>
#include <QSet>
#include <QSharedPointer>
#include <QStringList>
#include <QVariant>

/// Base of every loyalty system. What it does by itself is what a host needs from a system that has
/// nothing to say: it keeps state, answers from it and agrees.
///
/// Order of calls for a check, all on the host thread: setDocument; identifyByCard when a card is
/// presented; request whenever the host wants the effect on the document as it stands, with this
/// system's impacts taken off it; setPointsForSpend and spendPoints when the customer pays with
/// points, then recalculatePointsForEarn; commit once when the document is closed, or rollback when
/// its loyalty operations are abandoned; setDocument with null. After a restart
/// restoreLoyaltySystem stands in for request. Calls that reach a server may block for the
/// configured time-out, all others return at once.
///
/// What nobody but the host can prevent: commit confirms what the last request or restore has left,
/// whichever document that was about. For a sale without a successful request (or restored state)
/// of its own that is the previous customer's check, confirmed a second time. So a host commits a
/// sale only when the document's own last request has succeeded or it has been restored, and clears
/// (clearAfterClose after commit; rollback, or clearLoyaltyData for a check that is suspended,
/// otherwise) before it takes up the next one. Where closing fails after commit, it calls rollback
/// and restoreLoyaltySystem before the next attempt: confirming changes what is confirmed.
///
/// Config stands in its Singleton before init, Session with the document before cards and requests,
/// DBQueueBroker before commit. A document, card record or card that is missing is refused or left
/// out by the system; a host need not rely on that. docs/sale-step-by-step.md shows the whole
/// order, and the loyalty system in contract/watch tells a host which rule of it was broken.
///
/// Points are counted in currency units, one point for one unit. The order of the virtual
/// operations is part of the contract: plug-ins built against an older header rely on it.
///
/// What is said below of each operation holds for every system; "by default" is what this class
/// does by itself, at once, without a server and without throwing. A system that asks a server may
/// block in identifyByCard and request, for the configured time-out and never longer. A failure of
/// the exchange is false with the last error set; anything else that goes wrong leaves as an
/// exception, for which a host is prepared around every call and after which the sale goes on
/// without the system, or, after commit, stays open. Documents, records and impacts are shared with
/// the host; a system keeps none of them beyond rollback, clearAfterClose or clearLoyaltyData but
/// the document of setDocument.
///
/// orva-till never calls what is said to be for "a host that ..."; such an operation must do
/// nothing that a sale depends on.
class HOST_EXPORT BasicLoyaltySystem : public DocumentWatcher, public virtual BasicPlugin
{
public:
    /// A system that is not registered, has type code 0, no option and nothing held.
    BasicLoyaltySystem();
    /// Deregisters the system if it is still registered.
    ~BasicLoyaltySystem() override;

    /// Asks about a card that was presented and fills its record with owner, balance and points.
    /// Called after setDocument, before the record is put on the document; Session holds the same
    /// document. By default every record with a card is known, and nothing is filled in.
    /// @param cardRecord the host's: a card and this system's type code. What was read before
    /// something failed stays in it, so a host puts it on the document only after true
    /// @param type how the number reached the till; a system may do without
    /// @return false with the last error set when the system does not know the card or nobody
    /// answers; the sale goes on without it. By default false, without an error, for a record that
    /// is null or has no card
    virtual bool identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                                ECardNumberType type);
    /// Computes the effect on the document as it stands: discounts, accruals, messages, points to
    /// spend and to earn, which the getters below then return. Called whenever the host wants it
    /// anew; this system's impacts and tendered money are taken off the document before. What an
    /// earlier request left is replaced. By default there is no effect.
    /// @param document the one of setDocument and Session, with this system's card record
    /// @return false with the last error set when there is no effect to be had; what is held is
    /// then of no use, and the sale goes on without this system
    virtual bool request(const QSharedPointer<AbstractDocument>& document);
    /// Asks whether commit would confirm the current document; for a host that prepares all systems
    /// before it confirms with any. By default yes.
    /// @param force false: the system may refuse; true: the document closes in any case
    /// @return whether commit may be called
    virtual bool requestCommit(bool force);
    /// Confirms a document that is being closed, once, in the host's transaction that closes it.
    /// Never for a sale without a successful request, or restored state, of its own: see above.
    /// Sends nothing: a confirmation goes into the DBQueueBroker, so it returns at once. By default
    /// there is nothing to confirm.
    /// @param document the one of the last request, with its impacts and payments applied
    /// @return true; false or an exception (BasicException "queueError" for instance) when it
    /// cannot be confirmed. Nothing is then queued, and before the next attempt the host calls
    /// rollback and restoreLoyaltySystem
    virtual bool commit(const QSharedPointer<AbstractDocument>& document);
    /// Abandons the loyalty operations of a document that is given up, or whose closing failed;
    /// asks and sends nothing, since nothing was booked before commit. By default clearLoyaltyData.
    /// @param document that the operations were about
    /// @return true; what is held is gone
    virtual bool rollback(const QSharedPointer<AbstractDocument>& document);
    /// Abandons what is held when the cashier cancels a loyalty operation and keeps the document;
    /// for a host that has such a key. By default clearLoyaltyData.
    /// @return true; what is held is gone
    virtual bool cancel();

    /// Turns the points set with setPointsForSpend into bonus impacts on the lines of setDocument's
    /// document, for getBonusImpactsForSpend; the host applies them. Called after a successful
    /// request. More points than may be spent or than there is to pay are cut. By default no
    /// impact.
    /// @return true, also where the document has no card record of this system and so no point
    /// finds a place
    virtual bool spendPoints();
    /// Adapts the accruals, and the sum that getPointsForEarn returns, to the document's present
    /// sum. Called once for each spendPoints, after its impacts were applied: every call scales
    /// what the call before has left. By default they stay.
    /// @return true
    virtual bool recalculatePointsForEarn();
    /// What a single line earns, for a host that shows it beside the line. By default the sum of
    /// the accruals held for the position.
    /// @param qualifier a kind of accrual in the system's own words; disregarded by default
    /// @param position position number of the goods line
    /// @return points in currency units, 0 where the line earns nothing
    virtual double calculatePointsForEarnByQualifier(const QString& qualifier, int position);
    /// Drops the accruals of one kind of points, for a host that does not let a document earn them.
    /// The sum of getPointsForEarn stays.
    /// @param valutCode the kind, by the host's table of currencies
    virtual void removeEarnByValutCode(int valutCode);
    /// Drops accruals that a closed document must not keep; for a host that adds to a document
    /// after it was closed. By default none.
    virtual void removeEarnAfterClose();
    /// Adapts points to spend and to earn when more than points has changed on the document, for a
    /// host that does so without a new request. By default recalculatePointsForEarn, whose document
    /// is that of setDocument.
    /// @param document as it stands
    /// @return false when the system has to be requested again
    virtual bool recalculateAllPoints(const QSharedPointer<AbstractDocument>& document);

    /// @return whether there are points to be offered: by default whether those held are above 0
    virtual bool hasPointsForSpend();
    /// How many points may be spent on a document, to be offered to the customer after a request.
    /// Once setPointsForSpend was called it counts from that number; what the last request granted
    /// stands in the card record. By default the points held, whatever the document.
    /// @param document what there is to pay of it limits them
    /// @return points in currency units. A host checks the number: it is from a server, and may be
    /// none
    virtual double getPointsForSpend(const QSharedPointer<AbstractDocument>& document);
    /// @return whether the document earns points: by default whether those held are above 0
    virtual bool hasPointsForEarn();
    /// @return the points that the document earns, in currency units: the last request's, then
    /// those of recalculatePointsForEarn
    virtual double getPointsForEarn();
    /// @return whether the last spendPoints found a place for any points
    virtual bool hasBonusImpacts() const;
    /// The discounts that the last request grants, for the host to check and apply: positions that
    /// the document has, finite sums, the minimum price unless the impact says it may be undercut.
    /// @return impacts shared with the host; a system may drop them with spendPoints, since they
    /// are applied by then
    virtual QList<QSharedPointer<DocumentImpact>> getDiscountImpacts();
    /// Where the points of the last spendPoints found a place, for the host to check and apply. The
    /// amounts are those by position (DocumentImpact::getPositionSums).
    /// @return impacts shared with the host
    virtual QList<QSharedPointer<BonusImpact>> getBonusImpactsForSpend();
    /// @return what each line earns, as the last request said and recalculatePointsForEarn scaled
    /// it
    virtual QList<DocumentBonusRecord> getBonusRecords();
    /// @return what the last request tells the cashier, plain text, an entry a message; its
    /// characters are a server's and not fit for a terminal as they are
    virtual QStringList getMessagesToCashier();
    /// @return the same for the customer's slip
    virtual QStringList getMessagesToClient();
    /// @return the same for the customer's display, for a host that has one; by default nothing
    virtual QStringList getMessagesToClientDisplay();
    /// @return why the last request or identification failed, with an error code; empty when none
    /// did since it was cleared
    virtual tr::Tr getLastErrorString() const;
    /// Empties the last error: called before identifyByCard and request, which set it only when
    /// they fail.
    virtual void clearLastErrorString();

    /// Lets the system take over a customer whom the host has found in another way, for a host that
    /// keeps customers itself.
    /// @return whether it did; by default it does not
    virtual bool takeForCustomer();
    /// What is known of a card without a document, for a host that shows it before a sale. By
    /// default the owner's name, once an identification has filled it in.
    /// @param cardRecord the card; null is no error
    /// @param type how its number reached the till
    /// @return a line each, none for a card of which nothing is known
    virtual QStringList getCardInfo(const QSharedPointer<DocumentCardRecord>& cardRecord,
                                    ECardNumberType type);
    /// Takes up a document that an earlier process, or another till, has requested about: reads
    /// back from the document of setDocument what was kept there, and stands in for request. It
    /// adds to what is held, so a host clears before. Asks nobody; the impacts are on the document
    /// and not restored. Ends with AbstractDocument::refreshLoyaltyData. By default nothing was
    /// kept.
    /// @return true, also where there is nothing to be read
    virtual bool restoreLoyaltySystem();
    /// @return whether a customer may spend fewer points than are offered; by default yes
    virtual bool isAllowPartialPointsSpend();
    /// Says how many points the next spendPoints shall spend, and after it how many found a place,
    /// which recalculatePointsForEarn needs. Not checked: spendPoints cuts what is too much.
    /// @param document that they are for; disregarded by default
    /// @param points in currency units, 0 or more, a multiple of getRoundPrecisionForSpend
    virtual void setPointsForSpend(const QSharedPointer<AbstractDocument>& document, double points);
    /// @return the step in which points are spent, in currency units: by default 0.01
    virtual double getRoundPrecisionForSpend() const;
    /// Changes that step, for a host that configures it.
    /// @param precision in currency units, above 0; not checked
    virtual void setRoundPrecisionForSpend(double precision);
    /// @return whether the host may add discounts of its own to a document with this system's; by
    /// default yes
    virtual bool isAllowInternalDiscount() const;
    /// @return whether the host grants its discount on the change also where points were spent, for
    /// one that has such a discount; by default no
    virtual bool useDiscOnChangeWithBonusPayment();
    /// Has the system enter data of the card's owner through a dialogue of its own, for a host that
    /// offers it. May take as long as a person does.
    /// @return whether anything was entered; by default there is no dialogue
    virtual bool fillCardOwnerInfo();
    /// Finds the card's number in what a reader delivered, for a host that leaves this to the
    /// systems. By default it is the whole text.
    /// @param input what was read or typed, and how
    /// @return the number, empty when the input is no card of this system
    virtual QString getCardNumber(const loyalty::CardNumberInputData& input);
    /// @return whose cards the system works with; by default its own, which the host does not keep
    virtual ECardMode getCardMode() const;
    /// Slips that the system prints beside the check, for a host that prints them. By default none.
    /// @return a list of lines each
    virtual QList<QStringList> getSlips();
    /// Gives the customer another card in place of the document's, for a host that offers it.
    /// @return whether it was replaced; by default it cannot be
    virtual bool cardReplace();
    /// @return the kind of number that the cashier may add as a card once the goods are summed up,
    /// for a host that asks for one then; by default Undefined, none in particular
    virtual ECardNumberType getCardNumberTypeToAddCardInSubtotal() const;
    /// @param option one of the host's switches
    /// @return whether setOption has switched it on
    virtual bool checkOption(LoyaltySystemOption option) const;
    /// Has the system ask for the number of points through a dialogue of its own, for a host that
    /// does not ask itself. May take as long as a person does.
    /// @return whether it has asked and setPointsForSpend was called; by default the host asks
    virtual bool requestInputPointsForSpendByLoyalty();
    /// The check got its number; for a host that registers checks before they are paid. By default
    /// nothing is to be done.
    /// @return whether the sale may go on with the system
    virtual bool registerCheck();
    /// @param type whose coupon was presented
    /// @return whether the system takes it, for a host that offers coupons to all systems; by
    /// default not
    virtual bool couponBelongsToSystem(ECoupon::Type type) const;
    /// The document was closed and its transaction is durable: nothing of it may pass to the next
    /// customer. Called once after commit, before setDocument with null. By default
    /// clearLoyaltyData.
    virtual void clearAfterClose();
    /// The payment begins; for a host that tells. By default nothing is to be done.
    /// @return whether the sale may go on with the system
    virtual bool payCheck();
    /// Adapts the points to spend to the document's present sum, for a host that changes goods
    /// after points were spent and does not request anew. By default they stay.
    /// @param document as it stands
    /// @return false when the system has to be requested again
    virtual bool recalculatePointsForSpend(const QSharedPointer<AbstractDocument>& document);
    /// The fiscal printer is about to print the check; for a host that tells. By default nothing is
    /// to be done.
    /// @return whether the check may be printed
    virtual bool beforePutoutCheck();
    /// It has printed it. By default nothing is to be done.
    /// @return whether the system has done its part; the check stays printed either way
    virtual bool afterPutoutCheck();
    /// A check that was put aside is shown again, for a host that keeps it in memory meanwhile;
    /// what comes from a file is taken up with restoreLoyaltySystem. By default nothing is to be
    /// done.
    /// @return whether the sale may go on with the system
    virtual bool revealCheck();

    /// Makes the system ready, and known to the host: by default registerLoyaltySystem. Called
    /// once, with Config in its Singleton. Reads settings and asks nobody.
    /// @return false when it cannot be registered; the host then does without the system
    bool init() override;
    /// Undoes init at the end, with no document taken up. By default deregisterLoyaltySystem.
    /// @return false when it was not registered
    bool deinit() override;

    /// Spreads an accrual of the whole document over its lines, for a host that keeps accruals a
    /// line each. By default it stays whole.
    /// @param document whose lines there are
    /// @param record the accrual
    /// @return the parts, whose amounts add up to the record's
    virtual QList<DocumentBonusRecord>
    distributeBonusRecord(const QSharedPointer<AbstractDocument>& document,
                          const DocumentBonusRecord& record);
    /// How many points each line takes at most, for a host that spreads points itself.
    /// @param document whose lines there are
    /// @return position number to points in currency units; a line that is not named has no limit
    /// of the system's, as by default none has
    virtual QMap<int, double>
    getBonusImpactsLimits(const QSharedPointer<AbstractDocument>& document) const;
    /// @return the card of this system's record on the document of setDocument, shared with it;
    /// null when there is no document, record or card
    virtual QSharedPointer<Card> getCard() const;
    /// @return whether getCard has one
    virtual bool hasCard() const;

    /// Makes the system known to the host under its type code (LoyaltySystems); a second time does
    /// nothing. Called by init.
    /// @return false when another system has the code
    virtual bool registerLoyaltySystem();
    /// Undoes registerLoyaltySystem. Called by deinit.
    /// @return false when the system was not registered
    virtual bool deregisterLoyaltySystem();
    /// Switches an option on or off. Called by the system itself, in its constructor.
    /// @param option one of the host's switches
    /// @param value true: on
    virtual void setOption(LoyaltySystemOption option, bool value);
    /// @return the owner name under which setPluginData keeps this system's data in a document: by
    /// default "loyaltySystem" and the type code
    virtual QString getStoreDataKey() const;
    /// The same as the operation below, for the document of setDocument.
    /// @param key name of the value
    /// @param value what can be written into a stored check: texts, numbers, lists and maps of them
    virtual void setPluginData(const QString& key, const QVariant& value);
    /// Keeps a value with a document; does nothing without a document.
    /// @param document that shall keep it
    /// @param key name of the value, in the system's own words
    /// @param value replaces the former one; what can be written into a stored check: texts,
    /// numbers, lists and maps of them
    virtual void setPluginData(const QSharedPointer<AbstractDocument>& document, const QString& key,
                               const QVariant& value);
    /// The same as the operation below, for the document of setDocument.
    /// @param key name of the value
    /// @return the value, invalid when there is none
    virtual QVariant getPluginData(const QString& key);
    /// What setPluginData has kept.
    /// @param document that has kept it
    /// @param key name of the value
    /// @return the value, invalid when there is no document or it has none
    virtual QVariant getPluginData(const QSharedPointer<AbstractDocument>& document,
                                   const QString& key);
    /// Forgets what a system holds beside the state of this class, caches for instance; for a host
    /// that wants memory back. Must not change what the getters return. By default there is
    /// nothing.
    virtual void clearData() const;
    /// Forgets points, impacts, bonus records, messages and the last error. Called when a check is
    /// suspended, and by default wherever one ends. What is kept in the document stays there.
    virtual void clearLoyaltyData();

    /// @return the code by which the host tells loyalty systems apart, the same for the whole life
    /// of the object; cards and impacts on a document carry it
    int getLoyaltySystemType() const { return loyaltySystemType; }

protected:
    /// The type code; set in the derived class's constructor and never again.
    int loyaltySystemType = 0;
    /// What getPointsForSpend starts from: granted by the last request, or set by the host.
    /// Currency units.
    double pointsForSpend = 0;
    /// What getPointsForEarn returns, in currency units.
    double pointsForEarn = 0;
    /// What getDiscountImpacts returns.
    QList<QSharedPointer<DocumentImpact>> discountImpacts;
    /// What getBonusImpactsForSpend returns.
    QList<QSharedPointer<BonusImpact>> bonusImpactsForSpend;
    /// What getBonusRecords returns.
    QList<DocumentBonusRecord> bonusRecords;
    /// What getMessagesToCashier returns.
    QStringList messagesToCashier;
    /// What getMessagesToClient returns.
    QStringList messagesToClient;
    /// What getLastErrorString returns.
    tr::Tr lastError;

private:
    QSet<LoyaltySystemOption> options;
    double roundPrecisionForSpend = 0.01;
};

Q_DECLARE_INTERFACE(BasicLoyaltySystem, "LoyaltySystem")

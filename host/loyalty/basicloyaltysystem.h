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
/// Points are counted in currency units. The order of the virtual operations is part of the
/// contract: plug-ins built against an older header rely on it.
class HOST_EXPORT BasicLoyaltySystem : public DocumentWatcher, public virtual BasicPlugin
{
public:
    BasicLoyaltySystem();
    /// Deregisters the system if it is still registered.
    ~BasicLoyaltySystem() override;

    /// Asks about a card that was presented and fills its record. @return false with the last error
    /// set when the system does not know it.
    virtual bool identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                                ECardNumberType type);
    /// Computes the effect on the document. @return false with the last error set when there is
    /// none to be had; the sale then goes on without this system.
    virtual bool request(const QSharedPointer<AbstractDocument>& document);
    virtual bool requestCommit(bool force);
    /// Confirms a document that is being closed, once, in the host's transaction that closes it.
    /// Throws when it cannot be confirmed; nothing is then confirmed. Never for a sale without a
    /// successful request, or restored state, of its own: see above.
    virtual bool commit(const QSharedPointer<AbstractDocument>& document);
    /// Abandons the loyalty operations of a document.
    virtual bool rollback(const QSharedPointer<AbstractDocument>& document);
    virtual bool cancel();

    /// Turns the points to spend into bonus impacts, on the document of setDocument. None when that
    /// has no card record of this system.
    virtual bool spendPoints();
    /// Adapts the accruals to the document's present sum. Once for each spendPoints: every call
    /// scales what the call before has left.
    virtual bool recalculatePointsForEarn();
    virtual double calculatePointsForEarnByQualifier(const QString& qualifier, int position);
    /// Drops the accruals of one kind of points.
    virtual void removeEarnByValutCode(int valutCode);
    virtual void removeEarnAfterClose();
    virtual bool recalculateAllPoints(const QSharedPointer<AbstractDocument>& document);

    virtual bool hasPointsForSpend();
    virtual double getPointsForSpend(const QSharedPointer<AbstractDocument>& document);
    virtual bool hasPointsForEarn();
    virtual double getPointsForEarn();
    virtual bool hasBonusImpacts() const;
    virtual QList<QSharedPointer<DocumentImpact>> getDiscountImpacts();
    virtual QList<QSharedPointer<BonusImpact>> getBonusImpactsForSpend();
    virtual QList<DocumentBonusRecord> getBonusRecords();
    virtual QStringList getMessagesToCashier();
    virtual QStringList getMessagesToClient();
    virtual QStringList getMessagesToClientDisplay();
    /// Why the last request or identification failed; empty when none did since it was cleared.
    virtual tr::Tr getLastErrorString() const;
    virtual void clearLastErrorString();

    virtual bool takeForCustomer();
    /// What is known of a card, a line each.
    virtual QStringList getCardInfo(const QSharedPointer<DocumentCardRecord>& cardRecord,
                                    ECardNumberType type);
    /// Reads back from the document what was kept there, and adds it to what is held: clear first.
    virtual bool restoreLoyaltySystem();
    virtual bool isAllowPartialPointsSpend();
    virtual void setPointsForSpend(const QSharedPointer<AbstractDocument>& document, double points);
    /// The step in which points are spent, in currency units.
    virtual double getRoundPrecisionForSpend() const;
    virtual void setRoundPrecisionForSpend(double precision);
    virtual bool isAllowInternalDiscount() const;
    virtual bool useDiscOnChangeWithBonusPayment();
    virtual bool fillCardOwnerInfo();
    /// The card's number in what the reader delivered.
    virtual QString getCardNumber(const loyalty::CardNumberInputData& input);
    virtual ECardMode getCardMode() const;
    virtual QList<QStringList> getSlips();
    virtual bool cardReplace();
    virtual ECardNumberType getCardNumberTypeToAddCardInSubtotal() const;
    virtual bool checkOption(LoyaltySystemOption option) const;
    virtual bool requestInputPointsForSpendByLoyalty();
    virtual bool registerCheck();
    virtual bool couponBelongsToSystem(ECoupon::Type type) const;
    virtual void clearAfterClose();
    virtual bool payCheck();
    virtual bool recalculatePointsForSpend(const QSharedPointer<AbstractDocument>& document);
    virtual bool beforePutoutCheck();
    virtual bool afterPutoutCheck();
    virtual bool revealCheck();

    bool init() override;
    bool deinit() override;

    virtual QList<DocumentBonusRecord>
    distributeBonusRecord(const QSharedPointer<AbstractDocument>& document,
                          const DocumentBonusRecord& record);
    virtual QMap<int, double>
    getBonusImpactsLimits(const QSharedPointer<AbstractDocument>& document) const;
    /// The card of the current document's record of this system; null when there is none.
    virtual QSharedPointer<Card> getCard() const;
    virtual bool hasCard() const;

    /// Makes the system known to the host. @return false when another system has its type code.
    virtual bool registerLoyaltySystem();
    virtual bool deregisterLoyaltySystem();
    virtual void setOption(LoyaltySystemOption option, bool value);
    /// Owner name of this system's data in a document.
    virtual QString getStoreDataKey() const;
    virtual void setPluginData(const QString& key, const QVariant& value);
    virtual void setPluginData(const QSharedPointer<AbstractDocument>& document, const QString& key,
                               const QVariant& value);
    virtual QVariant getPluginData(const QString& key);
    virtual QVariant getPluginData(const QSharedPointer<AbstractDocument>& document,
                                   const QString& key);
    virtual void clearData() const;
    /// Forgets points, impacts, bonus records, messages and the last error.
    virtual void clearLoyaltyData();

    int getLoyaltySystemType() const { return loyaltySystemType; }

protected:
    int loyaltySystemType = 0;
    double pointsForSpend = 0;
    double pointsForEarn = 0;
    QList<QSharedPointer<DocumentImpact>> discountImpacts;
    QList<QSharedPointer<BonusImpact>> bonusImpactsForSpend;
    QList<DocumentBonusRecord> bonusRecords;
    QStringList messagesToCashier;
    QStringList messagesToClient;
    tr::Tr lastError;

private:
    QSet<LoyaltySystemOption> options;
    double roundPrecisionForSpend = 0.01;
};

Q_DECLARE_INTERFACE(BasicLoyaltySystem, "LoyaltySystem")

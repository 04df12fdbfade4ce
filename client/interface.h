// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "client/requestresult.h"
#include "host/document/abstractdocument.h"
#include "host/document/bonusimpact.h"
#include "host/document/edocumenttype.h"

#include <QDomDocument>
#include <QDomElement>
#include <QHash>
#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>

class Client;
class XmlWrapper;

namespace Log4Qt {
class Logger;
}

namespace orva {

/// The client of the loyalty server.
///
/// Every operation but the constructor, setLastResponse and throwIfNoField is virtual, and the
/// class calls its own operations through the virtual table, so that a test may replace any single
/// step. The order of declaration is the order of the slots and is kept.
///
/// Only precheck and sendRequest talk to the server; they block the calling thread until the
/// transport returns or its time-out ends. Everything else works on memory alone. One thread only,
/// no locking. Failures are thrown as orva::Exception. A document, card record or card that a step
/// needs and that is null is such a failure ("orvaRequestFormingError"), thrown by that step.
class Interface
{
public:
    /// What a request is for; the values number the steps of an exchange.
    enum class RequestType : int
    {
        Precheck = 0,
        PaymentTry = 1,
        CheckConfirm = 2,
    };

    /// A client without address and credentials, with a time-out of 10 and the two headers that
    /// every request carries.
    Interface();
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;
    virtual ~Interface();

    /// Asks the server what it grants for the document as it stands.
    ///
    /// Writes client, balance and points into the card record as soon as they are read: when a
    /// later reader throws, they stay there. @param cardRecord a record with a card, both not null;
    /// a missing card comes out only when the server has been asked
    /// @return the discounts, accruals and messages @throws orva::Exception
    virtual RequestResult precheck(const QSharedPointer<AbstractDocument>& document,
                                   const QSharedPointer<DocumentCardRecord>& cardRecord);

    /// The queue message that confirms a return: a fresh request with all three addresses.
    /// @throws orva::Exception when the document is neither a sale nor a return by sale
    virtual QMap<QString, QVariant>
    getBackBySaleRequest(const QSharedPointer<AbstractDocument>& document,
                         const QSharedPointer<DocumentCardRecord>& cardRecord) const;
    /// The queue message that confirms a sale: the last answer with the impacts used and the
    /// payment. They are inserted into the stored last answer itself, which is meant; a second call
    /// inserts them a second time. The card record is not used and may be null.
    virtual QMap<QString, QVariant>
    getSaleRequest(const QSharedPointer<AbstractDocument>& document,
                   const QSharedPointer<DocumentCardRecord>& cardRecord) const;

    /// @param url the server's address, expected to end with "/"; not checked
    virtual void setUrl(const QString& url);
    /// @param merchant the shop's code, kept as merchantId @param cashDesk its code, kept as pos
    virtual void setCashData(const QString& merchant, const QString& cashDesk);
    /// Handed to the transport as it is, which takes 0 or less for its default.
    virtual void setTimeout(int seconds);
    /// Builds the authorization header; an earlier one is replaced.
    virtual void setAuthData(const QString& user, const QString& password, const QString& apiKey);

    /// The answer of the last pre-check, sharing its nodes with the stored one; empty before.
    virtual QDomDocument getLastResponse() const;

    /// Spreads an amount of points over the lines of the last answer that may be paid with points.
    ///
    /// @param sum the amount to spend @param pointsAvailable the most that could be spent, the
    /// denominator of every line's share; both in currency units
    /// @return an impact a position, in ascending position order; the amounts placed are those
    /// recorded for the position, which the detail's sum does not follow
    /// @throws orva::Exception when there is something to place and no card record
    virtual QList<QSharedPointer<BonusImpact>>
    generateBonusImpacts(const QSharedPointer<DocumentCardRecord>& cardRecord, double sum,
                         double pointsAvailable) const;

    /// Sends a request document and keeps the answer as the last response.
    /// @throws orva::Exception, NoConnectionException; the last response is then unchanged
    virtual void sendRequest(RequestType type, const QDomDocument& request);

    /// The request document of a check. A record without a card gives an empty number.
    /// @throws orva::Exception when the document is neither a sale nor a return by sale, or one of
    /// the two is null
    virtual QDomDocument getRequestPayload(const QSharedPointer<AbstractDocument>& document,
                                           const QSharedPointer<DocumentCardRecord>& card) const;

    /// The card's client as the answer names them; never null, a blank name at worst.
    virtual QSharedPointer<Client> getClient(const QDomElement& root) const;
    /// The client's balance; 0 when it is no number.
    /// @throws orva::Exception "requestIncorrectAnswer" when the answer has none
    virtual double getBalance(const QDomElement& root) const;
    /// Points that may be spent; 0 when the answer has none or no number.
    virtual double getPointsForSpend(const QDomElement& root) const;
    /// Points that will be earned; 0 when the answer has none or no number.
    virtual double getPointsForEarn(const QDomElement& root) const;
    /// The discounts above half a kopeck, by line in document order; within a line the ordinary
    /// discount before the one on the change. Amounts are not rounded.
    virtual QList<QSharedPointer<DocumentImpact>>
    getDiscountImpacts(const QSharedPointer<DocumentCardRecord>& cardRecord,
                       const QDomElement& root) const;

    /// Adds to every line of the answer the impacts of this system that the document used on it.
    virtual void insertUsedImpacts(QDomElement& root,
                                   const QList<QSharedPointer<DocumentImpact>>& impacts) const;
    /// Adds the payment to the answer, always as cash.
    virtual void insertPayments(QDomElement& root, double sum) const;
    /// The goods lines of a request, as an element that belongs to no document yet.
    virtual QDomElement getRequestItems(const QList<QSharedPointer<GoodsItem>>& goods,
                                        EDocumentType type) const;

    /// The texts for one channel, in document order. The channel is compared as it stands.
    virtual QStringList getMessages(const QDomElement& root, const QString& channel) const;
    /// The accruals of half a kopeck and more, negative ones included, by line in document order.
    virtual QList<DocumentBonusRecord>
    getBonusRecords(const QSharedPointer<DocumentCardRecord>& cardRecord,
                    const QDomElement& root) const;

    /// The server's address with the path put behind its own, without a "/" between them.
    virtual QUrl getUrl(const QString& relativePath) const;
    /// A message that the host's queue can deliver without knowing this server.
    virtual QMap<QString, QVariant> createOfflineRequestMessage(const QDomDocument& request,
                                                                RequestType type) const;

    /// Replaces the last response by the document, sharing its nodes.
    void setLastResponse(const QDomDocument& doc);

    /// Always throws "requestIncorrectAnswer" with the field's name in the detail.
    [[noreturn]] static void throwIfNoField(const QString& field);

protected:
    QString pos;
    QString merchantId;
    int timeout;
    QUrl serverUrl;
    QHash<QString, QString> headers;
    QDomDocument lastResponse;
    QSharedPointer<XmlWrapper> xmlWrapper;
    Log4Qt::Logger* logger;
};

} // namespace orva

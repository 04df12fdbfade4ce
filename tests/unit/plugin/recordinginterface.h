// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "client/interface.h"
#include "host/document/client.h"
#include "tests/unit/plugin/hostdoubles.h"

namespace tests {

/// A client of the server that never does anything but note the call and answer what the test has
/// put in. Only the last response is the real one.
class RecordingInterface : public orva::Interface, public Recorder
{
    using Document = QSharedPointer<AbstractDocument>;
    using Record = QSharedPointer<DocumentCardRecord>;
    using Message = QMap<QString, QVariant>;

public:
    RecordingInterface() : Recorder(QStringLiteral("interface")) {}
    ~RecordingInterface() override
    {
        if (onDestruction) {
            onDestruction();
        }
    }

    orva::RequestResult result;
    QList<QSharedPointer<BonusImpact>> bonusImpacts;
    Message saleMessage{{QStringLiteral("payload"), QStringLiteral("sale")}};
    Message returnMessage{{QStringLiteral("payload"), QStringLiteral("return")}};
    std::function<void()> onDestruction;
    /// The sum of the last spreading, whose sign of zero no text shows.
    mutable double sumToSpread = 1;

    orva::RequestResult precheck(const Document& document, const Record& record) override
    {
        called(QStringLiteral("precheck(%1, %2)").arg(nameOf(document), nameOf(record)));
        return result;
    }
    Message getBackBySaleRequest(const Document& document, const Record& record) const override
    {
        called(
            QStringLiteral("getBackBySaleRequest(%1, %2)").arg(nameOf(document), nameOf(record)));
        return returnMessage;
    }
    Message getSaleRequest(const Document& document, const Record& record) const override
    {
        called(QStringLiteral("getSaleRequest(%1, %2)").arg(nameOf(document), nameOf(record)));
        return saleMessage;
    }
    void setUrl(const QString& url) override { called(QStringLiteral("setUrl(\"%1\")").arg(url)); }
    void setCashData(const QString& first, const QString& second) override
    {
        called(QStringLiteral("setCashData(\"%1\", \"%2\")").arg(first, second));
    }
    void setTimeout(int seconds) override { called(QStringLiteral("setTimeout(%1)").arg(seconds)); }
    void setAuthData(const QString& user, const QString& password, const QString& apiKey) override
    {
        called(QStringLiteral("setAuthData(\"%1\", \"%2\", \"%3\")").arg(user, password, apiKey));
    }
    QDomDocument getLastResponse() const override
    {
        called(QStringLiteral("getLastResponse()"));
        return orva::Interface::getLastResponse();
    }
    QList<QSharedPointer<BonusImpact>> generateBonusImpacts(const Record& record, double sum,
                                                            double available) const override
    {
        sumToSpread = sum;
        called(QStringLiteral("generateBonusImpacts(%1, %2, %3)")
                   .arg(nameOf(record), exact(sum), exact(available)));
        return bonusImpacts;
    }

    void sendRequest(RequestType, const QDomDocument&) override { unexpected("sendRequest"); }
    QDomDocument getRequestPayload(const Document&, const Record&) const override
    {
        return unexpected("getRequestPayload"), QDomDocument();
    }
    QSharedPointer<Client> getClient(const QDomElement&) const override
    {
        return unexpected("getClient"), QSharedPointer<Client>();
    }
    double getBalance(const QDomElement&) const override { return unexpected("getBalance"), 0; }
    double getPointsForSpend(const QDomElement&) const override
    {
        return unexpected("getPointsForSpend"), 0;
    }
    double getPointsForEarn(const QDomElement&) const override
    {
        return unexpected("getPointsForEarn"), 0;
    }
    QList<QSharedPointer<DocumentImpact>> getDiscountImpacts(const Record&,
                                                             const QDomElement&) const override
    {
        unexpected("getDiscountImpacts");
        return {};
    }
    void insertUsedImpacts(QDomElement&,
                           const QList<QSharedPointer<DocumentImpact>>&) const override
    {
        unexpected("insertUsedImpacts");
    }
    void insertPayments(QDomElement&, double) const override { unexpected("insertPayments"); }
    QDomElement getRequestItems(const QList<QSharedPointer<GoodsItem>>&,
                                EDocumentType) const override
    {
        return unexpected("getRequestItems"), QDomElement();
    }
    QUrl getUrl(const QString&) const override { return unexpected("getUrl"), QUrl(); }
    QStringList getMessages(const QDomElement&, const QString&) const override
    {
        return unexpected("getMessages"), QStringList();
    }
    QList<DocumentBonusRecord> getBonusRecords(const Record&, const QDomElement&) const override
    {
        return unexpected("getBonusRecords"), QList<DocumentBonusRecord>();
    }
    Message createOfflineRequestMessage(const QDomDocument&, RequestType) const override
    {
        return unexpected("createOfflineRequestMessage"), Message();
    }

    /// The last response without a note of it.
    QString storedResponse() const { return orva::Interface::getLastResponse().toString(1); }

    static QString exact(double value) { return QString::number(value, 'g', 17); }
    static QString nameOf(const Document& document)
    {
        const auto* const recorder = dynamic_cast<const RecordingDocument*>(document.get());
        return recorder == nullptr ? QStringLiteral("null") : recorder->name();
    }
    static QString nameOf(const Record& record)
    {
        return record.isNull() ? QStringLiteral("null")
                               : QStringLiteral("card ") + record->getNumber().toString();
    }

private:
    /// Steps that the plug-in leaves to the client itself: their names stand in the list of calls.
    void unexpected(const char* operation) const { called(QString::fromLatin1(operation)); }
};

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "client/interface.h"
#include "host/document/client.h"
#include "host/document/discountimpact.h"
#include "host/document/documentbonusrecord.h"
#include "host/xml/xmlwrapper.h"

#include <gmock/gmock.h>

namespace tests {

/// The client with its members open.
class OpenInterface : public orva::Interface
{
public:
    using Interface::headers;
    using Interface::lastResponse;
    using Interface::logger;
    using Interface::merchantId;
    using Interface::pos;
    using Interface::serverUrl;
    using Interface::timeout;
    using Interface::xmlWrapper;
};

/// The client with every step replaceable: each is the real one until a test says otherwise.
class Steps : public OpenInterface
{
public:
    using Message = QMap<QString, QVariant>;
    using DocumentPointer = QSharedPointer<AbstractDocument>;
    using CardRecordPointer = QSharedPointer<DocumentCardRecord>;
    using ImpactList = QList<QSharedPointer<DocumentImpact>>;
    using BonusImpactList = QList<QSharedPointer<BonusImpact>>;

    Steps();
    ~Steps() override;

    MOCK_METHOD(orva::RequestResult, precheck, (const DocumentPointer&, const CardRecordPointer&),
                (override));
    MOCK_METHOD(Message, getBackBySaleRequest, (const DocumentPointer&, const CardRecordPointer&),
                (const, override));
    MOCK_METHOD(Message, getSaleRequest, (const DocumentPointer&, const CardRecordPointer&),
                (const, override));
    MOCK_METHOD(void, setUrl, (const QString&), (override));
    MOCK_METHOD(void, setCashData, (const QString&, const QString&), (override));
    MOCK_METHOD(void, setTimeout, (int), (override));
    MOCK_METHOD(void, setAuthData, (const QString&, const QString&, const QString&), (override));
    MOCK_METHOD(QDomDocument, getLastResponse, (), (const, override));
    MOCK_METHOD(BonusImpactList, generateBonusImpacts, (const CardRecordPointer&, double, double),
                (const, override));
    MOCK_METHOD(void, sendRequest, (RequestType, const QDomDocument&), (override));
    MOCK_METHOD(QDomDocument, getRequestPayload, (const DocumentPointer&, const CardRecordPointer&),
                (const, override));
    MOCK_METHOD(QSharedPointer<Client>, getClient, (const QDomElement&), (const, override));
    MOCK_METHOD(double, getBalance, (const QDomElement&), (const, override));
    MOCK_METHOD(double, getPointsForSpend, (const QDomElement&), (const, override));
    MOCK_METHOD(double, getPointsForEarn, (const QDomElement&), (const, override));
    MOCK_METHOD(ImpactList, getDiscountImpacts, (const CardRecordPointer&, const QDomElement&),
                (const, override));
    MOCK_METHOD(void, insertUsedImpacts, (QDomElement&, const ImpactList&), (const, override));
    MOCK_METHOD(void, insertPayments, (QDomElement&, double), (const, override));
    MOCK_METHOD(QDomElement, getRequestItems,
                (const QList<QSharedPointer<GoodsItem>>&, EDocumentType), (const, override));
    MOCK_METHOD(QStringList, getMessages, (const QDomElement&, const QString&), (const, override));
    MOCK_METHOD(QList<DocumentBonusRecord>, getBonusRecords,
                (const CardRecordPointer&, const QDomElement&), (const, override));
    MOCK_METHOD(QUrl, getUrl, (const QString&), (const, override));
    MOCK_METHOD(Message, createOfflineRequestMessage, (const QDomDocument&, RequestType),
                (const, override));
};

} // namespace tests

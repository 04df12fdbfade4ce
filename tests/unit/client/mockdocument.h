// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"

#include <gmock/gmock.h>

namespace tests {

/// A document that tells what it was asked, how often and in which order.
class MockDocument : public AbstractDocument
{
public:
    MOCK_METHOD(QString, getDocumentId, (), (const, override));
    MOCK_METHOD(int, getCheckNumber, (), (const, override));
    MOCK_METHOD(int, getDocumentType, (), (const, override));
    MOCK_METHOD(bool, hasDateTime, (), (const, override));
    MOCK_METHOD(QDateTime, getDateTime, (), (const, override));
    MOCK_METHOD(QString, getSaleDocumentId, (), (const, override));
    MOCK_METHOD(QList<QSharedPointer<GoodsItem>>, getGoodsItems, (), (const, override));
    MOCK_METHOD(QList<QSharedPointer<DocumentImpact>>, getImpacts, (), (const, override));
    MOCK_METHOD(QSharedPointer<DocumentCardRecord>, getCardRecord, (int), (const, override));
    MOCK_METHOD(double, getCheckSum, (), (const, override));
    MOCK_METHOD(double, getSumToPay, (), (const, override));
    MOCK_METHOD(double, getPaymentSum, (), (const, override));
    MOCK_METHOD(QVariant, getPluginValue, (const QString&, const QString&, const QVariant&),
                (const, override));
    MOCK_METHOD(void, setPluginValue, (const QString&, const QString&, const QVariant&),
                (override));
    MOCK_METHOD(void, refreshLoyaltyData, (), (override));
};

} // namespace tests

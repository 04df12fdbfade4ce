// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "tests/unit/client/steps.h"

namespace tests {

using ::testing::_;

Steps::Steps()
{
    ON_CALL(*this, precheck(_, _)).WillByDefault([this](const auto& document, const auto& card) {
        return Interface::precheck(document, card);
    });
    ON_CALL(*this, getBackBySaleRequest(_, _))
        .WillByDefault([this](const auto& document, const auto& card) {
            return Interface::getBackBySaleRequest(document, card);
        });
    ON_CALL(*this, getSaleRequest(_, _))
        .WillByDefault([this](const auto& document, const auto& card) {
            return Interface::getSaleRequest(document, card);
        });
    ON_CALL(*this, setUrl(_)).WillByDefault([this](const QString& url) { Interface::setUrl(url); });
    ON_CALL(*this, setCashData(_, _))
        .WillByDefault([this](const QString& first, const QString& second) {
            Interface::setCashData(first, second);
        });
    ON_CALL(*this, setTimeout(_)).WillByDefault([this](int value) {
        Interface::setTimeout(value);
    });
    ON_CALL(*this, setAuthData(_, _, _))
        .WillByDefault([this](const QString& user, const QString& password, const QString& key) {
            Interface::setAuthData(user, password, key);
        });
    ON_CALL(*this, getLastResponse()).WillByDefault([this] {
        return Interface::getLastResponse();
    });
    ON_CALL(*this, generateBonusImpacts(_, _, _))
        .WillByDefault([this](const auto& card, double sum, double available) {
            return Interface::generateBonusImpacts(card, sum, available);
        });
    ON_CALL(*this, sendRequest(_, _))
        .WillByDefault([this](RequestType type, const QDomDocument& request) {
            Interface::sendRequest(type, request);
        });
    ON_CALL(*this, getRequestPayload(_, _))
        .WillByDefault([this](const auto& document, const auto& card) {
            return Interface::getRequestPayload(document, card);
        });
    ON_CALL(*this, getClient(_)).WillByDefault([this](const QDomElement& root) {
        return Interface::getClient(root);
    });
    ON_CALL(*this, getBalance(_)).WillByDefault([this](const QDomElement& root) {
        return Interface::getBalance(root);
    });
    ON_CALL(*this, getPointsForSpend(_)).WillByDefault([this](const QDomElement& root) {
        return Interface::getPointsForSpend(root);
    });
    ON_CALL(*this, getPointsForEarn(_)).WillByDefault([this](const QDomElement& root) {
        return Interface::getPointsForEarn(root);
    });
    ON_CALL(*this, getDiscountImpacts(_, _))
        .WillByDefault([this](const auto& card, const QDomElement& root) {
            return Interface::getDiscountImpacts(card, root);
        });
    ON_CALL(*this, insertUsedImpacts(_, _))
        .WillByDefault([this](QDomElement& root, const ImpactList& impacts) {
            Interface::insertUsedImpacts(root, impacts);
        });
    ON_CALL(*this, insertPayments(_, _)).WillByDefault([this](QDomElement& root, double sum) {
        Interface::insertPayments(root, sum);
    });
    ON_CALL(*this, getRequestItems(_, _))
        .WillByDefault([this](const auto& goods, EDocumentType type) {
            return Interface::getRequestItems(goods, type);
        });
    ON_CALL(*this, getMessages(_, _))
        .WillByDefault([this](const QDomElement& root, const QString& channel) {
            return Interface::getMessages(root, channel);
        });
    ON_CALL(*this, getBonusRecords(_, _))
        .WillByDefault([this](const auto& card, const QDomElement& root) {
            return Interface::getBonusRecords(card, root);
        });
    ON_CALL(*this, getUrl(_)).WillByDefault([this](const QString& path) {
        return Interface::getUrl(path);
    });
    ON_CALL(*this, createOfflineRequestMessage(_, _))
        .WillByDefault([this](const QDomDocument& request, RequestType type) {
            return Interface::createOfflineRequestMessage(request, type);
        });
}

Steps::~Steps() = default;

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a sale used of the awards that the server granted.

#include "client/elements.h"
#include "client/interface.h"
#include "client/loyaltysystemtype.h"
#include "client/response/line.h"
#include "host/xml/xmlutils.h"
#include "host/xml/xmlwrapper.h"

namespace orva {

namespace {

/// The element that reports an impact of that kind; empty for a kind that is not reported.
QString elementFor(EDiscountType::type type)
{
    switch (type) {
    case EDiscountType::LoyaltyDiscount:
        return element::usedDiscount();
    case EDiscountType::BonusPayment:
        return element::usedBonusInCurrency();
    }
    return {};
}

} // namespace

void Interface::insertUsedImpacts(QDomElement& root,
                                  const QList<QSharedPointer<DocumentImpact>>& impacts) const
{
    static const QList<QString> usedPath{element::usedAwards(), element::rawItemUsedAwards()};
    static const QVariant ownCardType(loyaltySystemType);

    QList<QDomElement> lines = answerLines(*xmlWrapper, root);
    QDomDocument scratch;
    for (QDomElement& line : lines) {
        const int position = linePosition(*xmlWrapper, line);
        for (const auto& impact : impacts) {
            const auto totals = impact->getTotals();
            if (totals->getPosition() != position) {
                continue;
            }
            const QString name = elementFor(totals->getDiscountType());
            if (name.isEmpty() || totals->getCardType() != ownCardType) {
                continue;
            }
            const QString sum = QString::number(totals->getDiscountSum(), 'f', 2);
            xmlWrapper->insertElement(line, usedPath,
                                      xmlutils::createTextElement(scratch, name, sum),
                                      XmlWrapper::Operation::Award);
        }
    }
}

} // namespace orva

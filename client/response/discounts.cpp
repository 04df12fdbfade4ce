// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The discounts that the server grants.

#include "client/elements.h"
#include "client/interface.h"
#include "client/response/line.h"
#include "client/zerothreshold.h"
#include "host/document/discountimpact.h"
#include "host/services/currenttime.h"
#include "host/xml/xmlwrapper.h"

using namespace Qt::StringLiterals;

namespace orva {

namespace {

QSharedPointer<DocumentImpact> makeDiscount(const QSharedPointer<DocumentCardRecord>& cardRecord,
                                            const QString& name, int position, double sum)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(cardRecord);
    detail->setDateTime(MockFactory<CurrentTime>::create()->currentDateTime());
    detail->setDiscountType(EDiscountType::LoyaltyDiscount);
    detail->setDiscountMode(EDiscountMode::Sum);
    detail->setDiscountName(name);
    detail->setDiscountObject(EDiscountObject::Position);
    detail->setPosition(position);
    detail->setDiscountSum(sum);
    detail->setImpactSource(EImpactSource::LoyaltySystem);
    detail->setMinPriceIgnored(true);
    return QSharedPointer<DiscountImpact>::create(detail);
}

} // namespace

QList<QSharedPointer<DocumentImpact>>
Interface::getDiscountImpacts(const QSharedPointer<DocumentCardRecord>& cardRecord,
                              const QDomElement& root) const
{
    static const QList<QString> discountPath = awardPath(element::discount());
    static const QList<QString> onChangePath = awardPath(element::discountOnChange());
    QList<QSharedPointer<DocumentImpact>> impacts;
    const QList<QDomElement> lines = answerLines(xmlWrapper, root);
    for (const QDomElement& line : lines) {
        const double discount = lineAmount(xmlWrapper, line, discountPath);
        const double onChange = lineAmount(xmlWrapper, line, onChangePath);
        // By the signed value: a negative amount is no discount.
        if (discount > zeroThreshold) {
            impacts.append(makeDiscount(cardRecord, u"Скидка Orva"_s,
                                        linePosition(xmlWrapper, line), discount));
        }
        if (onChange > zeroThreshold) {
            impacts.append(makeDiscount(cardRecord, u"Скидка на мелочь Orva"_s,
                                        linePosition(xmlWrapper, line), onChange));
        }
    }
    return impacts;
}

} // namespace orva

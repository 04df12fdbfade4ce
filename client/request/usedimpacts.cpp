// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a sale used of the awards that the server granted.

#include "client/elements.h"
#include "client/interface.h"
#include "client/loyaltysystemtype.h"
#include "client/request/fixedtext.h"
#include "client/response/line.h"
#include "host/xml/xmlutils.h"
#include "host/xml/xmlwrapper.h"

#include <algorithm>

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

/// An impact as it is reported.
struct Used
{
    int position;
    QString name;
    QString sum;
};

/// What is reported of the impacts, by position and for each position in the order of the list:
/// looking all impacts through for every line would take the square of the check's length.
QList<Used> usedByPosition(const QList<QSharedPointer<DocumentImpact>>& impacts)
{
    static const QVariant ownCardType(loyaltySystemType);
    QList<Used> used;
    used.reserve(impacts.size());
    for (const auto& impact : impacts) {
        const auto totals = impact->getTotals();
        const QString name = elementFor(totals->getDiscountType());
        if (!name.isEmpty() && totals->getCardType() == ownCardType) {
            used.append({totals->getPosition(), name, fixedText(totals->getDiscountSum(), 2)});
        }
    }
    std::stable_sort(used.begin(), used.end(), [](const Used& left, const Used& right) {
        return left.position < right.position;
    });
    return used;
}

} // namespace

void Interface::insertUsedImpacts(QDomElement& root,
                                  const QList<QSharedPointer<DocumentImpact>>& impacts) const
{
    static const QList<QString> usedPath{element::usedAwards(), element::rawItemUsedAwards()};

    const QList<Used> used = usedByPosition(impacts);
    QList<QDomElement> lines = answerLines(xmlWrapper, root);
    QDomDocument scratch;
    for (QDomElement& line : lines) {
        const int position = linePosition(xmlWrapper, line);
        auto next = std::partition_point(used.cbegin(), used.cend(), [position](const Used& entry) {
            return entry.position < position;
        });
        for (; next != used.cend() && next->position == position; ++next) {
            xmlWrapper->insertElement(line, usedPath,
                                      xmlutils::createTextElement(scratch, next->name, next->sum),
                                      XmlWrapper::Operation::Award);
        }
    }
}

} // namespace orva

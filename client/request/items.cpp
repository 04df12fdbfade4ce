// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The goods lines of a request.

#include "client/elements.h"
#include "client/interface.h"
#include "client/request/fixedtext.h"
#include "client/zerothreshold.h"
#include "host/xml/xmlutils.h"
#include "host/xml/xmlwrapper.h"

using namespace Qt::StringLiterals;

namespace orva {

namespace {

QString quantityText(double quantity)
{
    return fixedText(quantity, 3);
}

QString moneyText(double amount)
{
    return fixedText(amount, 2);
}

double returnedQuantity(const GoodsItem& item)
{
    const QVariant returned = item.getQuantBack();
    return returned.isNull() ? item.getQuantity() : returned.toDouble();
}

} // namespace

QDomElement Interface::getRequestItems(const QList<QSharedPointer<GoodsItem>>& goods,
                                       EDocumentType type) const
{
    static const QList<QString> returnedPointsPath{element::returnedAwards(),
                                                   element::rawItemReturnedAwards(),
                                                   element::usedBonusInCurrency()};
    QDomDocument scratch;
    QDomElement items = scratch.createElement(element::items());
    for (const auto& item : goods) {
        QDomElement line = scratch.createElement(element::rawItem());
        const auto append = [&scratch, &line](const QString& name, const QString& text) {
            line.appendChild(xmlutils::createTextElement(scratch, name, text));
        };

        if (type == EDocumentType::ReturnBySale) {
            append(element::returnedQuantity(), quantityText(returnedQuantity(*item)));
            const double points = item->getBonusImpactSum();
            if (points > zeroThreshold) {
                xmlWrapper->insertElement(line, returnedPointsPath,
                                          scratch.createTextNode(moneyText(points)),
                                          XmlWrapper::Operation::Award);
            }
        } else {
            append(element::quantity(), quantityText(item->getQuantity()));
        }
        append(element::id(), QString::number(item->getPosnum()));
        append(element::sku(), item->getCode());
        // Six significant digits, unlike every other amount, which is meant.
        append(element::price(), QString::number(item->getPrice(), 'g', 6));
        append(element::total(), moneyText(item->getSumb()));
        // The quantity sold, on a return too.
        append(element::minTotal(), moneyText(item->getMinPrice() * item->getQuantity()));
        append(element::weight(), item->getTmcUnit()->isFractional() ? u"weight"_s : u"piece"_s);
        items.appendChild(line);
    }
    return items;
}

} // namespace orva

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// How a sale was paid.

#include "client/elements.h"
#include "client/interface.h"
#include "host/xml/xmlutils.h"
#include "host/xml/xmlwrapper.h"

using namespace Qt::StringLiterals;

namespace orva {

void Interface::insertPayments(QDomElement& root, double sum) const
{
    static const QList<QString> path{element::payments(), element::rawCheckPayment()};
    QDomDocument scratch;
    const QDomElement amount =
        xmlutils::createTextElement(scratch, element::amount(), QString::number(sum, 'f', 2));
    // One payment, always cash, whatever the customer paid with, which is meant.
    const QDomElement type = xmlutils::createTextElement(scratch, element::amountType(), u"cash"_s);
    xmlWrapper->insertElement(root, path, amount, XmlWrapper::Operation::Payment);
    xmlWrapper->insertElement(root, path, type, XmlWrapper::Operation::Payment);
}

} // namespace orva

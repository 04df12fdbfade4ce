// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/requestforms.h"

#include "simulator/documents/documentform.h"
#include "simulator/documents/endpoints.h"
#include "simulator/documents/names.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

struct Forms
{
    DocumentForm saleRequest{u"sale-request"_s};
    DocumentForm returnRequest{u"return-request"_s};
    DocumentForm saleConfirmation{u"sale-confirmation"_s};
};

const Forms& allForms()
{
    static const Forms forms; // read by one thread, whoever comes first
    return forms;
}

/// Whether most of what tells a return from a sale says that it is one: a single one may be wrong.
bool isReturn(const Element& request)
{
    const int signs =
        (request.child(names::chType).text().trimmed() == "2"_L1 ? 1 : 0) +
        (request.child(names::originalId) ? 1 : 0) +
        (request.all({names::items, names::rawItem, names::returnedQuantity}).empty() ? 0 : 1);
    return signs > 1;
}

const DocumentForm& formOf(const Element& request, const QString& endpoint)
{
    const Forms& forms = allForms();
    if (isReturn(request)) {
        return forms.returnRequest; // a return is confirmed with its request
    }
    return endpoint == endpoints::precheck ? forms.saleRequest : forms.saleConfirmation;
}

/// What is wrong with the root; empty for nothing.
QString rootObjection(const Element& request)
{
    return request.name() == names::rawCheck ? QString()
                                             : u"%1 is the root element: expected %2"_s.arg(
                                                   request.name().left(40), names::rawCheck);
}

} // namespace

std::optional<QString> requestObjection(const Element& request, const QString& endpoint)
{
    const QString root = rootObjection(request);
    return root.isEmpty() ? formOf(request, endpoint).objectionTo(request) : root;
}

QStringList requestObjections(const Element& request, const QString& endpoint, qsizetype most)
{
    const QString root = rootObjection(request);
    return root.isEmpty() ? formOf(request, endpoint).objectionsTo(request, most)
                          : QStringList{root};
}

QString closestForm(const Element& request, const QString& endpoint)
{
    if (request.name() != names::rawCheck) {
        return {};
    }
    const bool isPrecheck = endpoint == endpoints::precheck;
    if (!isReturn(request)) {
        const Forms& forms = allForms();
        const DocumentForm& other = isPrecheck ? forms.saleConfirmation : forms.saleRequest;
        if (!other.objectionTo(request)) {
            return isPrecheck
                       ? u"The address is %1: the document is a confirmation, which belongs to "
                         "%2 and %3"_s.arg(endpoints::precheck, endpoints::paymentTry,
                                           endpoints::checkConfirm)
                       : u"The address is %1: the document is that of a pre-check, which "
                         "belongs to %2"_s.arg(endpoint, endpoints::precheck);
        }
    }
    QStringList fields;
    for (xmlNode* at = xmlFirstElementChild(request.handle()); at != nullptr && fields.size() < 20;
         at = xmlNextElementSibling(at)) {
        fields.append(Element(at).name().left(40));
    }
    return u"It was held against the form of a %1; there are %2"_s.arg(
        isReturn(request) ? u"return"_s
        : isPrecheck      ? u"sale"_s
                          : u"sale's confirmation"_s,
        fields.isEmpty() ? u"no fields"_s : fields.join(u", "_s));
}

} // namespace simulator

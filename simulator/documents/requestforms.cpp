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

const DocumentForm& formOf(const Element& request, const QString& endpoint)
{
    static const Forms forms; // read by one thread, whoever comes first
    // the confirmation of a return is the request once more
    if (request.child(names::chType).text().trimmed() == "2"_L1 ||
        request.child(names::originalId)) {
        return forms.returnRequest;
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

} // namespace simulator

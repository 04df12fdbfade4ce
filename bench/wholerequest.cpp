// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/wholerequest.h"

#include "bench/openorva.h"
#include "host/services/session.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

QVariant writtenAnswer(const Document& document)
{
    return document.getPluginValue(u"Orva"_s, u"lastResponse"_s, {});
}

qsizetype writtenRecords(const Document& document)
{
    return document.getPluginValue(u"Orva"_s, u"bonusRecords"_s, {}).toList().size();
}

} // namespace

class WholeRequest::Implementation
{
public:
    explicit Implementation(int lines)
        : sale(makeSale(lines, makeCard())), transport(makeAnswer(lines))
    {
        Singleton<Session>::instance->setDocument(sale);
        orva.init();
    }

    QSharedPointer<Document> sale;
    CannedTransport transport;
    OpenOrva orva;
};

WholeRequest::WholeRequest(int lines) : implementation(std::make_unique<Implementation>(lines)) {}

WholeRequest::~WholeRequest() = default;

void WholeRequest::run()
{
    if (!implementation->orva.request(implementation->sale)) {
        throw std::runtime_error("the request failed");
    }
}

bool WholeRequest::isLike(const RequestFloor& floor) const
{
    const Document& own = *implementation->sale;
    const Document& other = *floor.document;
    return implementation->transport.posted == floor.posted &&
           writtenAnswer(own) == writtenAnswer(other) &&
           writtenRecords(own) == writtenRecords(other);
}

} // namespace bench

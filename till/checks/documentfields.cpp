// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/documentfields.h"

#include "host/document/money.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

qint64 paymentOf(const Document& document)
{
    return money::toKopecks(document.getPaymentSum()).value_or(0);
}

} // namespace

const QList<Field<Document>>& documentfields::ofDocument()
{
    using SetType = void (Document::*)(int);
    static const QList<Field<Document>> fields{
        field::of(u"id"_s, &Document::getDocumentId, &Document::setDocumentId),
        field::of(u"number"_s, &Document::getCheckNumber, &Document::setCheckNumber),
        field::of(u"type"_s, &Document::getDocumentType, SetType(&Document::setDocumentType)),
        field::of(u"time"_s, &Document::getDateTime, &Document::setDateTime),
        field::of(u"sale"_s, &Document::getSaleDocumentId, &Document::setSaleDocumentId),
        {u"payment"_s, Access<Document, qint64>{paymentOf, &Document::setPaymentKopecks}},
    };
    return fields;
}

const QList<Field<DocumentCardRecord>>& documentfields::ofCardRecord()
{
    using Record = DocumentCardRecord;
    static const QList<Field<Record>> fields{
        field::of(u"pointsForSpend"_s, &Record::getPointsForSpend, &Record::setPointsForSpend),
        field::of(u"pointsForEarn"_s, &Record::getPointsForEarn, &Record::setPointsForEarn),
        field::of(u"balance"_s, &Record::getBonusBalance, &Record::setBonusBalance),
    };
    return fields;
}

const QList<Field<DocumentImpactDetail>>& documentfields::ofImpactDetail()
{
    using Detail = DocumentImpactDetail;
    static const QList<Field<Detail>> fields{
        field::of(u"cardIndex"_s, &Detail::getCardIndex, &Detail::setCardIndex),
        field::of(u"time"_s, &Detail::getDateTime, &Detail::setDateTime),
        field::ofEnumeration(u"type"_s, &Detail::getDiscountType, &Detail::setDiscountType, 7),
        field::ofEnumeration(u"mode"_s, &Detail::getDiscountMode, &Detail::setDiscountMode, 3),
        field::of(u"name"_s, &Detail::getDiscountName, &Detail::setDiscountName),
        field::ofEnumeration(u"object"_s, &Detail::getDiscountObject, &Detail::setDiscountObject,
                             1),
        field::of(u"position"_s, &Detail::getPosition, &Detail::setPosition),
        field::of(u"rate"_s, &Detail::getDiscountRate, &Detail::setDiscountRate),
        field::of(u"sum"_s, &Detail::getDiscountSum, &Detail::setDiscountSum),
        field::ofEnumeration(u"source"_s, &Detail::getImpactSource, &Detail::setImpactSource, 3),
        field::of(u"minPriceIgnored"_s, &Detail::isMinPriceIgnored, &Detail::setMinPriceIgnored),
    };
    return fields;
}

} // namespace till

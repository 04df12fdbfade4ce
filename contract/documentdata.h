// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentcardrecord.h"
#include "host/document/documentimpact.h"
#include "host/document/goodsitem.h"

#include <QDateTime>
#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QtGlobal>

namespace contract {

/// What a document that the host makes for the suite must be about.
struct DocumentData
{
    QString documentId;
    int checkNumber = 0;
    /// An EDocumentType as a number.
    int documentType = 1;
    /// Invalid for a document without a time of its own.
    QDateTime dateTime;
    QString saleDocumentId;
    QList<QSharedPointer<GoodsItem>> goodsItems;
    /// Applied in this order.
    QList<QSharedPointer<DocumentImpact>> impacts;
    QList<QSharedPointer<DocumentCardRecord>> cardRecords;
    /// Money tendered, points not included.
    qint64 paymentKopecks = 0;
};

} // namespace contract

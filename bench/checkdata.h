// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/document.h"
#include "host/document/documentimpact.h"

#include <QByteArray>
#include <QDomDocument>
#include <QList>
#include <QSharedPointer>
#include <QString>

/// The checks and answers that are measured: every line costs work in every reader.
namespace bench {

/// What stands in one goods line of request and answer, as text and as value. Amounts differ from
/// line to line, the lengths of their texts do not.
struct Line
{
    explicit Line(int number);

    int position;
    QString id;
    QString quantity;
    QString sku;
    QString price;
    QString total;
    QString minTotal;
    double discount;
    double discountOnChange;
    double bonus;
    double allowance;
};

/// A card of this loyalty system.
QSharedPointer<DocumentCardRecord> makeCard();
/// A sale of that many lines, of a customer with that card.
QSharedPointer<Document> makeSale(int lines, const QSharedPointer<DocumentCardRecord>& card);
/// The server's answer to a sale of that many lines: it repeats the request and adds to each line
/// two discounts, an accrual and an allowance for points.
QByteArray makeAnswer(int lines);
/// The same as a document.
QDomDocument parsedAnswer(int lines);
/// An answer with that many messages, half of them for the cashier.
QDomDocument manyMessages(int messages);
/// What a document keeps of the applied discounts, and of points where two a line are wanted.
QList<QSharedPointer<DocumentImpact>>
makeUsedImpacts(int lines, int perLine, const QSharedPointer<DocumentCardRecord>& card);

} // namespace bench

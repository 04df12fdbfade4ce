// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/documentcardrecord.h"
#include "host/document/documentimpact.h"
#include "host/document/ediscounttype.h"
#include "host/document/goodsitem.h"

#include <QDomDocument>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

namespace tests {

/// The document of a text that must be well-formed; throws std::invalid_argument otherwise.
QDomDocument parse(const QString& xml);

/// The child elements in their order, each as "name=text".
QStringList childTexts(const QDomElement& parent);
/// The names of the child elements in their order.
QStringList childNames(const QDomElement& parent);
/// The text of the element as it is written, without the document around it.
QString written(const QDomNode& node);

/// A record of this loyalty system (15) unless another type is given, with a card.
QSharedPointer<DocumentCardRecord> cardRecord(const QString& number, int loyaltySystemType = 15,
                                              int codeInternal = 0);

/// A goods line by its fields.
struct Line
{
    int posnum = 1;
    QString code = QStringLiteral("1000");
    double quantity = 1;
    double price = 0;
    double sumb = 0;
    double minPrice = 0;
    bool fractional = false;
    QVariant quantBack = {};
    double bonusImpactSum = 0;
};
QSharedPointer<GoodsItem> goodsItem(const Line& line);

/// An impact as the host keeps it after it was applied: of a type and for a position, granted for a
/// card record.
QSharedPointer<DocumentImpact> impact(EDiscountType::type type, int position, double sum,
                                      const QSharedPointer<DocumentCardRecord>& record);

/// Compares with the file tests/data/client/NAME byte for byte; a failure shows the lines that
/// differ. A missing file throws as in dataFile.
::testing::AssertionResult equalsFile(const QByteArray& actual, const QString& name);
/// The bytes of tests/data/client/NAME. Throws std::invalid_argument when there is no such file.
QByteArray dataFile(const QString& name);

} // namespace tests

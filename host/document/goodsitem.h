// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/tmcunit.h"
#include "host/hostexport.h"

#include <QString>
#include <QVariant>

/// One goods line of a document. Money is in currency units, quantities in the line's unit. Holds
/// what the host gives it and computes nothing: quantity, price and sums agree because the host
/// says so.
class HOST_EXPORT GoodsItem
{
public:
    /// A line in which every number is 0 and every text empty, of a unit in pieces.
    GoodsItem();

    /// Position number in the document, unique in it.
    int getPosnum() const { return posnum; }
    void setPosnum(int value) { posnum = value; }

    /// The code by which the shop and the loyalty server know the goods.
    QString getCode() const { return code; }
    void setCode(const QString& value) { code = value; }

    /// The name printed on the check.
    QString getName() const { return name; }
    void setName(const QString& value) { name = value; }

    /// Quantity sold; on a return line still the quantity that the sale sold.
    double getQuantity() const { return quantity; }
    void setQuantity(double value) { quantity = value; }

    /// Quantity returned, a double; null when not set.
    QVariant getQuantBack() const { return quantBack; }
    void setQuantBack(const QVariant& value) { quantBack = value; }

    /// Price of one unit before any impact, 0 or more.
    double getPrice() const { return price; }
    void setPrice(double value) { price = value; }

    /// The lowest price of one unit that a discount may lead to; 0 for none.
    double getMinPrice() const { return minPrice; }
    void setMinPrice(double value) { minPrice = value; }

    /// The line's sum without the loyalty system's impacts; on a return line that of the returned
    /// part.
    double getSumb() const { return sumb; }
    void setSumb(double value) { sumb = value; }

    /// Points spent on the line, in currency; on a return line those that go back.
    double getBonusImpactSum() const { return bonusImpactSum; }
    void setBonusImpactSum(double value) { bonusImpactSum = value; }

    /// The line's unit, never null, owned by the line.
    TmcUnit* getTmcUnit() { return &unit; }
    /// Gives the line another unit.
    /// @param value is copied; pointers from getTmcUnit stay good and see it
    void setTmcUnit(const TmcUnit& value) { unit = value; }

private:
    int posnum = 0;
    QString code;
    QString name;
    double quantity = 0;
    QVariant quantBack;
    double price = 0;
    double minPrice = 0;
    double sumb = 0;
    double bonusImpactSum = 0;
    TmcUnit unit;
};

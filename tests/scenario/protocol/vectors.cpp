// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/vectors.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

__extension__ using Wide = __int128;

/// An object whose keys are taken one by one.
class Entry
{
public:
    explicit Entry(const QJsonValue& value) : object(value.toObject()), rest(object.keys()) {}
    ~Entry() { EXPECT_TRUE(rest.isEmpty()) << "unknown: " << qPrintable(rest.join(u' ')); }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    bool has(const QString& key) const { return object.contains(key); }
    QJsonValue take(const QString& key)
    {
        EXPECT_TRUE(rest.removeOne(key)) << "missing: " << qPrintable(key);
        return object.value(key);
    }
    qint64 number(const QString& key)
    {
        const QJsonValue value = take(key);
        // beyond 64 bits or with decimals it is no integer
        EXPECT_EQ(value.toInteger(-7), value.toInteger(7)) << qPrintable(key);
        return value.toInteger();
    }
    QString text(const QString& key) { return take(key).toString(); }

private:
    const QJsonObject object;
    QStringList rest;
};

QJsonArray listOf(const QString& file, const QString& key)
{
    QFile json(file);
    EXPECT_TRUE(json.open(QIODevice::ReadOnly)) << qPrintable(file);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json.readAll(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << qPrintable(error.errorString());
    return document.object().value(key).toArray();
}

SaleVector saleOf(const QJsonValue& value)
{
    Entry entry(value);
    SaleVector sale;
    sale.name = entry.text(u"name"_s);
    for (const QJsonValue line : entry.take(u"lines"_s).toArray()) {
        Entry of(line);
        sale.lines.push_back({of.number(u"total"_s), of.number(u"award"_s),
                              of.number(u"discountGranted"_s), of.number(u"pointsAllowed"_s),
                              of.number(u"discount"_s), of.number(u"points"_s)});
    }
    sale.paid = entry.number(u"paid"_s);
    if (entry.has(u"refused"_s)) {
        sale.refused = entry.text(u"refused"_s);
        return sale;
    }
    for (const QJsonValue earned : entry.take(u"earned"_s).toArray()) {
        sale.earned.push_back(earned.toInteger());
    }
    sale.spent = entry.number(u"spent"_s);
    sale.change = entry.number(u"change"_s);
    return sale;
}

ReturnVector returnOf(const QJsonValue& value)
{
    Entry entry(value);
    ReturnVector vector;
    vector.name = entry.text(u"name"_s);
    Entry sold(entry.take(u"sold"_s));
    vector.quantity = sold.number(u"quantity"_s);
    vector.total = sold.number(u"total"_s);
    vector.points = sold.number(u"points"_s);
    vector.earned = sold.number(u"earned"_s);
    for (const QJsonValue part : entry.take(u"returns"_s).toArray()) {
        Entry of(part);
        ReturnVector::Part read;
        read.quantity = of.number(u"quantity"_s);
        read.total = of.number(u"total"_s);
        read.givenBack = of.number(u"givenBack"_s);
        if (of.has(u"refused"_s)) {
            read.refused = of.text(u"refused"_s);
        } else {
            read.takenBack = of.number(u"takenBack"_s);
        }
        vector.returns.push_back(read);
    }
    return vector;
}

} // namespace

std::vector<SaleVector> saleVectors(const QString& file)
{
    std::vector<SaleVector> sales;
    for (const QJsonValue value : listOf(file, u"sales"_s)) {
        sales.push_back(saleOf(value));
    }
    return sales;
}

std::vector<ReturnVector> returnVectors(const QString& file)
{
    std::vector<ReturnVector> returns;
    for (const QJsonValue value : listOf(file, u"returns"_s)) {
        returns.push_back(returnOf(value));
    }
    return returns;
}

bool isShare(qint64 share, qint64 amount, qint64 part, qint64 whole)
{
    const Wide twice = Wide(2) * amount * part + whole;
    return Wide(2) * whole * share <= twice && twice < Wide(2) * whole * (Wide(share) + 1);
}

} // namespace tests

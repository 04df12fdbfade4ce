// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "tests/unit/client/fixtures.h"

#include <QFile>
#include <QTextStream>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

/// What stands between the first and the last lines that differ, "-" what is expected and "+" what
/// came.
std::string difference(const QByteArray& expected, const QByteArray& actual)
{
    const QByteArrayList left = expected.split('\n');
    const QByteArrayList right = actual.split('\n');
    const qsizetype shorter = std::min(left.size(), right.size());
    qsizetype head = 0;
    while (head < shorter && left.at(head) == right.at(head)) {
        ++head;
    }
    qsizetype tail = 0;
    while (tail < shorter - head &&
           left.at(left.size() - 1 - tail) == right.at(right.size() - 1 - tail)) {
        ++tail;
    }
    QByteArray text = "from line " + QByteArray::number(head + 1) + " on:\n";
    for (const QByteArray& line : left.mid(head, left.size() - head - tail)) {
        text += "-" + line + "\n";
    }
    for (const QByteArray& line : right.mid(head, right.size() - head - tail)) {
        text += "+" + line + "\n";
    }
    return text.toStdString();
}

} // namespace

QDomDocument parse(const QString& xml)
{
    QDomDocument document;
    if (!document.setContent(xml)) {
        throw std::invalid_argument("not well-formed: " + xml.toStdString());
    }
    return document;
}

QStringList childTexts(const QDomElement& parent)
{
    QStringList texts;
    for (QDomElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        texts.append(child.tagName() + u'=' + child.text());
    }
    return texts;
}

QStringList childNames(const QDomElement& parent)
{
    QStringList names;
    for (QDomElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        names.append(child.tagName());
    }
    return names;
}

QString written(const QDomNode& node)
{
    QString text;
    QTextStream stream(&text);
    node.save(stream, -1);
    return text;
}

QSharedPointer<DocumentCardRecord> cardRecord(const QString& number, int loyaltySystemType,
                                              int codeInternal)
{
    return QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>::create(number),
                                                      loyaltySystemType, codeInternal);
}

QSharedPointer<GoodsItem> goodsItem(const Line& line)
{
    auto item = QSharedPointer<GoodsItem>::create();
    item->setPosnum(line.posnum);
    item->setCode(line.code);
    item->setQuantity(line.quantity);
    item->setPrice(line.price);
    item->setSumb(line.sumb);
    item->setMinPrice(line.minPrice);
    item->setTmcUnit(line.fractional ? TmcUnit(u"кг"_s, true) : TmcUnit(u"шт"_s, false));
    item->setQuantBack(line.quantBack);
    item->setBonusImpactSum(line.bonusImpactSum);
    return item;
}

QSharedPointer<DocumentImpact> impact(EDiscountType::type type, int position, double sum,
                                      const QSharedPointer<DocumentCardRecord>& record)
{
    auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(record);
    detail->setDiscountType(type);
    detail->setPosition(position);
    detail->setDiscountSum(sum);
    return QSharedPointer<DocumentImpact>::create(detail);
}

QByteArray dataFile(const QString& name)
{
    QFile file(QString::fromUtf8(ORVA_TEST_DATA) + u"/client/"_s + name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::invalid_argument("no file " + file.fileName().toStdString());
    }
    return file.readAll();
}

::testing::AssertionResult equalsFile(const QByteArray& actual, const QString& name)
{
    const QByteArray expected = dataFile(name);
    if (expected == actual) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << name.toStdString() << " differs " << difference(expected, actual);
}

} // namespace tests

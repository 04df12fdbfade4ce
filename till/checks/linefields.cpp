// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/linefields.h"

#include "host/document/money.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

using LineKind = LineField::Kind;
using InFile = LineField::InFile;
using Shown = LineField::Shown;

QList<LineField> describe()
{
    using Item = GoodsItem;
    return {
        LineField{u"position"_s, LineKind::Number, &Line::position}
            .shown(Shown::Always)
            .item(&Item::getPosnum, &Item::setPosnum),
        LineField{u"code"_s, LineKind::Text, &Line::code}
            .inFile(InFile::Required)
            .shown(Shown::Always)
            .item(&Item::getCode, &Item::setCode),
        LineField{u"name"_s, LineKind::Text, &Line::name}
            .inFile(InFile::Required)
            .shown(Shown::Always)
            .item(&Item::getName, &Item::setName),
        LineField{u"unit"_s, LineKind::Unit, &Line::fractional}
            .inFile(InFile::Optional)
            .shown(Shown::Always),
        LineField{u"price"_s, LineKind::Money, &Line::priceKopecks}
            .inFile(InFile::Required)
            .shown(Shown::Always)
            .item(&Item::getPrice, &Item::setPrice),
        LineField{u"minPrice"_s, LineKind::Money, &Line::minPriceKopecks}
            .inFile(InFile::Optional)
            .item(&Item::getMinPrice, &Item::setMinPrice),
        LineField{u"quantity"_s, LineKind::Quantity, &Line::thousandths}
            .inFile(InFile::Required)
            .shown(Shown::Always)
            .item(&Item::getQuantity, &Item::setQuantity),
        LineField{u"returned"_s, LineKind::Quantity, &Line::returnedThousandths}.shown(
            Shown::OnReturns),
        LineField{u"sum"_s, LineKind::Money, &Line::sumKopecks}
            .inFile(InFile::Optional)
            .shown(Shown::Always)
            .item(&Item::getSumb, &Item::setSumb),
        LineField{u"discount"_s, LineKind::Share, &Line::discountKopecks}.shown(Shown::Always),
        LineField{u"spent"_s, LineKind::Share, &Line::spentKopecks}.shown(Shown::OnSales),
        LineField{u"awarded"_s, LineKind::Share, &Line::awardedKopecks},
        LineField{u"earned"_s, LineKind::Share, &Line::earnedKopecks}.shown(Shown::OnSales),
        LineField{u"givenBack"_s, LineKind::Share, &Line::givenBackKopecks}.shown(Shown::OnReturns),
        LineField{u"takenBack"_s, LineKind::Share, &Line::takenBackKopecks}.shown(Shown::OnReturns),
    };
}

double inUnits(qint64 thousandths)
{
    return static_cast<double>(thousandths) / 1000.0;
}

StoredLineField storedField(const LineField& field)
{
    const auto access = [](auto member) -> decltype(StoredLineField::access) {
        using Value = std::decay_t<decltype(Line().*member)>;
        return Access<Line, Value>{
            [member](const Line& line) { return line.*member; },
            [member](Line& line, const Value& value) { line.*member = value; }};
    };
    return {field.name, std::visit(access, field.member), field.since, std::nullopt,
            field.fromOlder};
}

TmcUnit unitOf(GoodsItem item)
{
    return *item.getTmcUnit();
}

QString unitText(const GoodsItem& item)
{
    return unitOf(item).getName();
}

bool isFractional(const GoodsItem& item)
{
    return unitOf(item).isFractional();
}

void setUnitText(GoodsItem& item, const QString& text)
{
    item.setTmcUnit(TmcUnit(text, isFractional(item)));
}

void setFractional(GoodsItem& item, bool fractional)
{
    item.setTmcUnit(TmcUnit(unitText(item), fractional));
}

/// What the document's line has and the till's line has otherwise.
QList<Field<GoodsItem>> madeOfSeveral()
{
    return {
        {u"unit"_s, Access<GoodsItem, QString>{unitText, setUnitText}},
        {u"fractional"_s, Access<GoodsItem, bool>{isFractional, setFractional}},
        field::of(u"quantityBack"_s, &GoodsItem::getQuantBack, &GoodsItem::setQuantBack),
        field::of(u"bonusSum"_s, &GoodsItem::getBonusImpactSum, &GoodsItem::setBonusImpactSum),
    };
}

void setInItem(GoodsItem& item, const LineField& field, const Line& line)
{
    const auto set = [&](const auto& value) {
        using Value = std::decay_t<decltype(value)>;
        std::get<Access<GoodsItem, Value>>(field.itemField->access).set(item, value);
    };
    switch (field.kind) {
    case LineKind::Number:
        set(field.valueIn<int>(line));
        break;
    case LineKind::Text:
        set(field.valueIn<QString>(line));
        break;
    case LineKind::Unit:
        set(field.valueIn<bool>(line));
        break;
    case LineKind::Money:
    case LineKind::Share:
        set(money::fromKopecks(field.valueIn<qint64>(line)));
        break;
    case LineKind::Quantity:
        set(inUnits(field.valueIn<qint64>(line)));
        break;
    }
}

} // namespace

LineField& LineField::inFile(InFile how)
{
    fileUse = how;
    return *this;
}

LineField& LineField::shown(Shown where)
{
    jsonUse = where;
    return *this;
}

const QList<LineField>& linefields::all()
{
    static const QList<LineField> fields = describe();
    return fields;
}

const QList<StoredLineField>& linefields::stored()
{
    static const QList<StoredLineField> fields = [] {
        QList<StoredLineField> list;
        for (const LineField& field : all()) {
            list.append(storedField(field));
        }
        return list;
    }();
    return fields;
}

const QList<Field<GoodsItem>>& linefields::ofItem()
{
    static const QList<Field<GoodsItem>> fields = [] {
        QList<Field<GoodsItem>> list = madeOfSeveral();
        for (const LineField& field : all()) {
            if (field.itemField) {
                list.append(*field.itemField);
            }
        }
        return list;
    }();
    return fields;
}

QSharedPointer<GoodsItem> linefields::itemOf(const Line& line, bool isReturn)
{
    const auto item = QSharedPointer<GoodsItem>::create();
    for (const LineField& field : all()) {
        if (field.itemField) {
            setInItem(*item, field, line);
        }
    }
    item->setTmcUnit(TmcUnit(unitName(line.fractional), line.fractional));
    item->setBonusImpactSum(
        money::fromKopecks(isReturn ? line.givenBackKopecks : line.spentKopecks));
    if (isReturn) {
        item->setQuantBack(inUnits(line.returnedThousandths));
    }
    return item;
}

QString linefields::unitName(bool isFractional)
{
    return isFractional ? u"kg"_s : u"pcs"_s;
}

} // namespace till

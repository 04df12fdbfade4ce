// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/checkreader.h"

#include "simulator/documents/names.h"
#include "simulator/documents/rejection.h"

#include <unordered_set>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr qsizetype longestIdentifier = 256;

QString quoted(const QString& text)
{
    return u'"' + (text.size() > 40 ? text.left(40) + u"..."_s : text).simplified() + u'"';
}

QString identifier(const Element& root, QLatin1StringView name)
{
    const QString text = requiredText(root, name);
    if (text.isEmpty() || text.size() > longestIdentifier) {
        throw Rejection(400, u"%1 must have 1 to %2 characters"_s.arg(name).arg(longestIdentifier));
    }
    return text;
}

Check::Type readType(const Element& root)
{
    const QString text = requiredText(root, names::chType).trimmed();
    if (text == "1"_L1) {
        return Check::Type::Sale;
    }
    if (text == "2"_L1) {
        return Check::Type::Return;
    }
    throw Rejection(
        400, u"%1 is %2: expected 1 (sale) or 2 (return)"_s.arg(names::chType).arg(quoted(text)));
}

Thousandths readQuantity(const Element& item, Check::Type type, const QString& path)
{
    const QLatin1StringView name =
        type == Check::Type::Sale ? names::quantity : names::returnedQuantity;
    const QString text = requiredText(item, name, path);
    const std::optional<Thousandths> quantity = readThousandths(text);
    if (!quantity) {
        throw Rejection(
            400,
            u"%1%2 is %3: expected a quantity such as 1.000"_s.arg(path, name).arg(quoted(text)));
    }
    if (*quantity < 0 || (*quantity == 0 && type == Check::Type::Return)) {
        throw Rejection(424, u"%1%2 is %3: it must be above 0"_s.arg(path, name, text));
    }
    return *quantity;
}

Kopecks readGivenBack(const Element& item, const QString& path)
{
    Kopecks sum = 0;
    for (const Element& used : item.all(
             {names::returnedAwards, names::rawItemReturnedAwards, names::usedBonusInCurrency})) {
        sum = checkedSum(sum, readAmount(used.text(), path + names::usedBonusInCurrency));
    }
    return sum;
}

Line readLine(const Element& item, Check::Type type, const QString& path)
{
    Line line;
    const QString id = requiredText(item, names::id, path);
    bool isNumber = false;
    line.id = id.toInt(&isNumber);
    if (!isNumber) {
        throw Rejection(
            400, u"%1%2 is %3: expected a whole number"_s.arg(path, names::id).arg(quoted(id)));
    }
    line.sku = item.child(names::sku).text();
    line.quantity = readQuantity(item, type, path);
    line.total = readAmount(requiredText(item, names::total, path), path + names::total);
    if (item.child(names::minTotal)) {
        line.minTotal = readAmount(item.child(names::minTotal).text(), path + names::minTotal);
    }
    if (type == Check::Type::Return) {
        line.givenBack = readGivenBack(item, path);
    }
    return line;
}

void readLines(const Element& root, Check& check)
{
    if (!root.child(names::items)) {
        throw Rejection(400, u"%1 is missing"_s.arg(names::items));
    }
    std::unordered_set<int> ids;
    Kopecks sum = 0;
    for (const Element& item : root.all({names::items, names::rawItem})) {
        const QString path =
            u"%1/%2[%3]/"_s.arg(names::items, names::rawItem).arg(check.lines.size() + 1);
        check.lines.push_back(readLine(item, check.type, path));
        if (!ids.insert(check.lines.back().id).second) {
            throw Rejection(424, u"Two lines have the id %1"_s.arg(check.lines.back().id));
        }
        sum = checkedSum(sum, check.lines.back().total);
    }
    if (sum != check.total) {
        throw Rejection(424, u"The lines add up to %1, but the total is %2"_s.arg(
                                 writeKopecks(sum), writeKopecks(check.total)));
    }
}

} // namespace

QString requiredText(const Element& parent, QLatin1StringView name, const QString& path)
{
    const Element element = parent.child(name);
    if (!element) {
        throw Rejection(400, u"%1%2 is missing"_s.arg(path, name));
    }
    return element.text();
}

Kopecks readAmount(const QString& text, const QString& path)
{
    const std::optional<Kopecks> amount = readKopecks(text);
    if (!amount) {
        throw Rejection(400,
                        u"%1 is %2: expected an amount such as 12.50"_s.arg(path, quoted(text)));
    }
    if (*amount < 0) {
        throw Rejection(424, u"%1 is %2: it must not be negative"_s.arg(path, text.trimmed()));
    }
    return *amount;
}

Check readCheck(const Element& root)
{
    if (root.name() != names::rawCheck) {
        throw Rejection(400, u"The root element is %1: expected %2"_s.arg(quoted(root.name()),
                                                                          names::rawCheck));
    }
    Check check;
    check.id = identifier(root, names::id);
    check.number = root.child(names::number).text();
    check.date = root.child(names::date).text();
    check.type = readType(root);
    if (check.type == Check::Type::Return) {
        check.originalId = identifier(root, names::originalId);
    }
    check.cardNumber = requiredText(root, names::cardNumber);
    check.total = readAmount(requiredText(root, names::total), names::total);
    readLines(root, check);
    return check;
}

} // namespace simulator

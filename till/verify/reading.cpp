// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/reading.h"

#include "till/checks/amount.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace till::verify {

namespace names = protocol::names;

std::optional<qint64> readAmount(const QString& text)
{
    static const QRegularExpression form(u"^(-?)([0-9]{1,13})(?:\\.([0-9]{1,2}))?$"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const qint64 kopecks =
        match.captured(2).toLongLong() * 100 + match.captured(3).leftJustified(2, u'0').toInt();
    return match.captured(1).isEmpty() ? kopecks : -kopecks;
}

QString Reading::rootName() const
{
    return tree.elements().isEmpty() ? QString() : tree.elements().first().name;
}

QList<qsizetype> Reading::lines() const
{
    if (tree.elements().isEmpty()) {
        return {};
    }
    const qsizetype items = tree.find(0, {names::items});
    return items < 0 ? QList<qsizetype>() : tree.children(items, names::rawItem);
}

qsizetype Reading::line(const QString& id) const
{
    for (const qsizetype line : lines()) {
        if (textIn(line, {names::id}) == id) {
            return line;
        }
    }
    return -1;
}

QString Reading::textIn(qsizetype element, const Names& way) const
{
    if (element < 0 || tree.elements().isEmpty()) {
        return {};
    }
    const qsizetype found = tree.find(element, way);
    return found < 0 ? QString() : tree.elements().at(found).text;
}

std::optional<qint64> Reading::amountIn(qsizetype element, const Names& way) const
{
    return readAmount(textIn(element, way));
}

QString Reading::path(qsizetype element, const Names& way) const
{
    if (element < 0 || tree.elements().isEmpty()) {
        return way.join(u'/');
    }
    const qsizetype found = tree.find(element, way);
    return found >= 0 ? tree.path(found) : tree.path(element) + u'/' + way.join(u'/');
}

Names Reading::balancePath()
{
    return {names::client, names::rawCheckClient, names::account, names::rawCheckAccount,
            names::balance};
}

bool Reading::saysBalance() const
{
    static const QRegularExpression digit(u"[0-9]"_s);
    const Names path = balancePath();
    return has(path) && (text(path).isEmpty() || text(path).contains(digit));
}

std::optional<qint64> Reading::balance() const
{
    return amount(balancePath());
}

Booking Booking::of(const QByteArray& confirmation)
{
    const Reading reading(confirmation);
    Booking booking;
    for (const qsizetype line : reading.lines()) {
        booking.total += reading.amountIn(line, {names::total}).value_or(0);
        const protocol::XmlTree& tree = reading.xml();
        const qsizetype used = tree.find(line, {names::usedAwards, names::rawItemUsedAwards});
        if (used < 0) {
            continue;
        }
        for (const qsizetype element : tree.children(used, names::usedDiscount)) {
            booking.discount += readAmount(tree.elements().at(element).text).value_or(0);
        }
        for (const qsizetype element : tree.children(used, names::usedBonusInCurrency)) {
            booking.spent += readAmount(tree.elements().at(element).text).value_or(0);
        }
    }
    const qint64 discounted = booking.total - booking.discount;
    for (const qsizetype line : reading.lines()) {
        const qint64 award =
            reading.amountIn(line, {names::awards, names::rawItemAwards, names::awardBonus})
                .value_or(0);
        if (award > 0 && discounted > 0) {
            booking.earned += amount::proportion(award, discounted - booking.spent, discounted);
        }
    }
    return booking;
}

} // namespace till::verify

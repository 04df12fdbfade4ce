// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checksoundness.h"

#include "host/document/money.h"
#include "till/checks/amount.h"
#include "till/checks/check.h"
#include "till/checks/linefields.h"

#include <QSet>

#include <algorithm>

namespace till {
namespace {

/// More than anybody hands over or asks for, and far from where sums overflow.
constexpr qint64 mostKopecks = 1'000'000'000'000'000;

bool isWithin(qint64 value, qint64 least, qint64 most)
{
    return value >= least && value <= most;
}

bool isAmount(qint64 kopecks)
{
    return isWithin(kopecks, 0, amount::maximumKopecks);
}

/// An award may be negative, and so may be what follows from it.
bool isShare(qint64 kopecks)
{
    return isWithin(kopecks, -amount::maximumKopecks, amount::maximumKopecks);
}

bool isSound(const LineField& field, const Line& line)
{
    switch (field.kind) {
    case LineField::Kind::Number:
        return field.valueIn<int>(line) >= 0;
    case LineField::Kind::Text:
    case LineField::Kind::Unit:
        return true;
    case LineField::Kind::Money:
        return isAmount(field.valueIn<qint64>(line));
    case LineField::Kind::Share:
        return isShare(field.valueIn<qint64>(line));
    case LineField::Kind::Quantity:
        return isWithin(field.valueIn<qint64>(line), 0, amount::maximumThousandths);
    }
    return false;
}

bool isSound(const Line& line)
{
    const auto& fields = linefields::all();
    return line.position >= 1 && line.returnedThousandths <= line.thousandths &&
           std::all_of(fields.cbegin(), fields.cend(),
                       [&line](const LineField& field) { return isSound(field, line); });
}

bool areSound(const QList<Line>& lines)
{
    QSet<int> positions;
    for (const Line& line : lines) {
        if (!isSound(line) || positions.contains(line.position)) {
            return false;
        }
        positions.insert(line.position);
    }
    return true;
}

bool isSound(const Document& document)
{
    constexpr int lastYear = 9999;
    const int type = document.getDocumentType();
    const bool isReturn = type == static_cast<int>(EDocumentType::ReturnBySale);
    return !document.getDocumentId().isEmpty() && document.getCheckNumber() >= 0 &&
           (isReturn || type == static_cast<int>(EDocumentType::Sale)) &&
           isReturn == !document.getSaleDocumentId().isEmpty() && document.hasDateTime() &&
           isWithin(document.getDateTime().date().year(), 1, lastYear) &&
           isAmount(money::toKopecks(document.getPaymentSum()).value_or(-1));
}

/// What the loyalty system has to do with the check.
bool isLoyaltySound(const Check& check)
{
    const bool needsCard = check.confirmed || check.loyalty == LoyaltyState::Unasked ||
                           check.loyalty == LoyaltyState::Ready;
    return isWithin(qint64(check.loyalty), qint64(LoyaltyState::NoCard),
                    qint64(LoyaltyState::Refused)) &&
           isWithin(qint64(check.points.kind), qint64(PointsChoice::Kind::None),
                    qint64(PointsChoice::Kind::All)) &&
           isWithin(check.points.kopecks, 0, mostKopecks) &&
           (!needsCard || !check.cardRecord().isNull());
}

} // namespace

bool isSound(const Check& check)
{
    return isSound(*check.document) && !check.lines.isEmpty() && areSound(check.lines) &&
           isAmount(check.goodsKopecks()) && isLoyaltySound(check) &&
           isWithin(check.tenderedKopecks.value_or(0), 0, mostKopecks) && check.returnsBefore >= 0;
}

} // namespace till

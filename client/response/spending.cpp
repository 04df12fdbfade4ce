// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Spreading points over the lines.

#include "client/elements.h"
#include "client/interface.h"
#include "client/required.h"
#include "client/response/line.h"
#include "client/zerothreshold.h"
#include "host/services/currenttime.h"
#include "host/xml/xmlwrapper.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <log4qt/logger.h>

using namespace Qt::StringLiterals;

namespace orva {

namespace {

bool isZero(double amount)
{
    return std::abs(amount) < zeroThreshold;
}

/// Cuts off the fraction. What does not fit 64 bits becomes the nearest limit and what is not a
/// number 0: the one place where a share saturates.
qint64 truncated(double value)
{
    // 2^63, which is the first double beyond the range
    constexpr double limit = 9223372036854775808.0;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= limit) {
        return std::numeric_limits<qint64>::max();
    }
    if (value < -limit) {
        return std::numeric_limits<qint64>::min();
    }
    return static_cast<qint64>(value);
}

/// Rounds to hundredths, halves away from zero. The last thousandth of a kopeck is part of the rule
/// and lets 0.499 kopecks round away from zero already; the order of the operations is kept.
double roundedShare(double x)
{
    double sign = 0.0;
    if (x > 0) {
        sign = 1.0;
    } else if (x < 0) {
        sign = -1.0;
    }
    const double hundredths = (x + sign * 0.005) * 100.0 + sign * 0.001;
    return static_cast<double>(truncated(hundredths)) / 100.0;
}

QSharedPointer<BonusImpact> makeSpending(const QSharedPointer<DocumentCardRecord>& cardRecord,
                                         int position, double sum)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(cardRecord);
    detail->setCardIndex(QVariant(requireCardRecord(cardRecord).getCodeInternal()));
    detail->setDateTime(MockFactory<CurrentTime>::create()->currentDateTime());
    detail->setDiscountType(EDiscountType::BonusPayment);
    detail->setDiscountMode(EDiscountMode::Sum);
    detail->setDiscountName(u"Баллы Orva"_s);
    detail->setDiscountObject(EDiscountObject::Position);
    detail->setPosition(position);
    detail->setDiscountRate(QVariant(sum));
    detail->setDiscountSum(sum);
    detail->setImpactSource(EImpactSource::LoyaltySystem);
    detail->setMinPriceIgnored(true);
    return QSharedPointer<BonusImpact>::create(detail);
}

/// What one call works on.
struct Spending
{
    /// The amount still to place.
    double amount = 0;
    /// The allowance left by position.
    QMap<int, double> remaining;
    QMap<int, QSharedPointer<BonusImpact>> impacts;

    /// Places a line's share and returns it, 0 for a line that may not be paid with points.
    double placeShare(const QSharedPointer<DocumentCardRecord>& cardRecord, int position,
                      double allowance, double ratio)
    {
        if (isZero(allowance)) {
            return 0.0;
        }
        double share = roundedShare(ratio * allowance);
        if (amount > zeroThreshold && isZero(share)) {
            share = std::min(amount, allowance);
        }
        const double spend = std::min(share, amount);
        remaining.insert(position, allowance - spend);
        const auto impact = makeSpending(cardRecord, position, spend);
        impact->addDetailForPosition(position, spend);
        // A later line of the same position takes the place of the earlier one, whose share stays
        // taken from the amount.
        impacts.insert(position, impact);
        return share;
    }

    /// Places what rounding left over. The lowest position is always called, if only with 0.
    void placeRest()
    {
        for (auto left = remaining.cbegin(); left != remaining.cend(); ++left) {
            const double addition = std::min(amount, left.value());
            impacts.value(left.key())->addDetailForPosition(left.key(), addition);
            amount -= addition;
            if (isZero(amount)) {
                break;
            }
        }
    }
};

} // namespace

QList<QSharedPointer<BonusImpact>>
Interface::generateBonusImpacts(const QSharedPointer<DocumentCardRecord>& cardRecord, double sum,
                                double pointsAvailable) const
{
    logger->debug(u"Создание бонусных списаний на сумму %1"_s, QString::number(sum, 'f', 2));
    static const QList<QString> allowancePath = awardPath(element::allowBonusInCurrency());
    const QList<QDomElement> lines = answerLines(xmlWrapper, lastResponse.documentElement());
    if (isZero(sum) || lines.isEmpty()) {
        return {};
    }

    // No guard against a maximum of 0: an infinite quotient makes the ratio 1.
    const double ratio = std::min(1.0, sum / pointsAvailable);
    Spending spending{.amount = sum, .remaining = {}, .impacts = {}};
    for (const QDomElement& line : lines) {
        const int position = linePosition(xmlWrapper, line);
        const double allowance = lineAmount(xmlWrapper, line, allowancePath);
        const double share = spending.placeShare(cardRecord, position, allowance, ratio);
        spending.amount = share < spending.amount ? spending.amount - share : 0.0;
        if (isZero(spending.amount)) {
            break;
        }
    }
    if (!spending.impacts.isEmpty()) {
        spending.placeRest();
    }
    return spending.impacts.values();
}

} // namespace orva

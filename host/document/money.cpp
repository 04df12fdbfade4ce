// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/money.h"

#include <QString>

#include <cmath>

namespace money {

std::optional<qint64> toKopecks(double amount)
{
    if (!std::isfinite(amount)) {
        return std::nullopt;
    }
    QString digits = QString::number(amount, 'f', 2);
    digits.remove(u'.');
    bool fits = false;
    const qint64 kopecks = digits.toLongLong(&fits);
    return fits ? std::optional(kopecks) : std::nullopt;
}

double fromKopecks(qint64 kopecks)
{
    return static_cast<double>(kopecks) / 100.0;
}

} // namespace money

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/deviations/deviation.h"

namespace simulator {

const std::vector<Deviation>& deviations()
{
    static const std::vector<Deviation> all = [] {
        std::vector<Deviation> rows;
        for (const std::span<const Deviation> subject :
             {numberDeviations(), lineDeviations(), clientDeviations(), bodyDeviations(),
              headerDeviations(), statusDeviations(), orderDeviations(), bookingDeviations()}) {
            rows.insert(rows.end(), subject.begin(), subject.end());
        }
        return rows;
    }();
    return all;
}

const Deviation* deviation(const QString& name)
{
    for (const Deviation& row : deviations()) {
        if (name == QLatin1StringView(row.name)) {
            return &row;
        }
    }
    return nullptr;
}

Habits habitsOf(const QStringList& names)
{
    Habits habits;
    for (const QString& name : names) {
        const Deviation* const found = deviation(name);
        if (found == nullptr) {
            continue;
        }
        if (const auto* const sale = std::get_if<SaleHabit>(&found->how)) {
            habits.sales.push_back(*sale);
        } else if (const auto* const returned = std::get_if<ReturnHabit>(&found->how)) {
            habits.returns.push_back(*returned);
        }
    }
    return habits;
}

} // namespace simulator

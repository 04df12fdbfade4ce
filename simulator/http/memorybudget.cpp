// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/memorybudget.h"

#include <algorithm>

namespace simulator {

MemoryBudget::Share MemoryBudget::take(qint64 bytes, std::chrono::milliseconds patience)
{
    const qint64 share = std::clamp<qint64>(bytes, 0, capacity);
    std::unique_lock lock(mutex);
    if (!givenBack.wait_for(lock, patience, [&] { return taken + share <= capacity; })) {
        return {};
    }
    taken += share;
    return {this, [share](MemoryBudget* budget) {
                {
                    const std::scoped_lock back(budget->mutex);
                    budget->taken -= share;
                }
                budget->givenBack.notify_all();
            }};
}

} // namespace simulator

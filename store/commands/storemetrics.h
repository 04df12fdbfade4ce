// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/database/connection.h"

#include <prometheus/collectable.h>
#include <prometheus/metric_family.h>

#include <mutex>

namespace orvastore {

/// How the store stands, as families of metrics. A store that cannot be asked is the family
/// orva_store_up with 0, and nothing else.
class StoreMetrics : public prometheus::Collectable
{
public:
    explicit StoreMetrics(const StoreSettings& settings) : connection(settings, {}) {}

    /// Blocks for the store's time-out at most. Any thread.
    std::vector<prometheus::MetricFamily> Collect() const override;

private:
    mutable std::mutex mutex; ///< of the connection
    mutable Connection connection;
};

} // namespace orvastore

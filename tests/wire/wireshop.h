// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/e2e/shop.h"
#include "tests/wire/recorder.h"

namespace tests {

/// A message of the till's queue as it is stored.
struct StoredMessage
{
    QByteArray headers;
    QByteArray urls;
    QByteArray payload;
};

/// A shop whose exchanges are recorded.
class WireShop : public Shop
{
protected:
    void SetUp() override;

    /// Runs a command of the till that must succeed.
    void run(const QStringList& arguments) const;
    /// All messages of the till's queue, delivered or not, in their order.
    [[nodiscard]] std::vector<StoredMessage> storedMessages() const;

    std::unique_ptr<Recorder> recorder;
};

} // namespace tests

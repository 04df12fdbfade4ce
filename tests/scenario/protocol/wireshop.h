// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/protocol/recorder.h"
#include "tests/support/shop.h"

#include <functional>

namespace poshost {
class Statement;
}

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

    /// All messages of the till's queue, delivered or not, in their order.
    [[nodiscard]] std::vector<StoredMessage> storedMessages() const;
    /// The columns of the queue's tables, as "queue_bodies.payload".
    [[nodiscard]] QStringList queueColumns() const;

    std::unique_ptr<Recorder> recorder;

private:
    void query(const QString& sql,
               const std::function<void(const poshost::Statement&)>& take) const;
};

} // namespace tests

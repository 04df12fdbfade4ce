// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/sharing/sharedstore.h"

#include <functional>
#include <optional>

namespace till {

/// Reads the closed checks of all tills of the shop, and the suspended ones that wait for one of
/// them. Every operation throws Failure with the reason when the store does not answer, and
/// whatever what it hands over to throws.
class SharedReading
{
public:
    using Take = std::function<bool(const orvastore::KeptCheck&)>;

    /// @param shared must live longer
    explicit SharedReading(SharedStore& shared) : store(shared) {}

    /// Hands the closed checks over, the one closed last at first.
    /// @param before identifier of the check to go on behind; empty: from the newest
    /// @param take returns false when it wants no more
    void forEachCheck(const QString& before, const Take& take) const;
    /// Hands the waiting ones over, the one left first at first.
    void forEachLeft(const std::function<void(const orvastore::LeftCheck&)>& take) const;
    /// A closed check by its identifier or number; nothing when the store has none.
    /// @throws Failure (Usage) also when several have the number
    std::optional<orvastore::KeptCheck> find(const QString& which) const;
    /// The sale of a return with the returns that the store got to know of before this one; nothing
    /// when it does not know both.
    struct Origin
    {
        Check sale;
        QList<Check> earlier;
    };
    std::optional<Origin> originOf(const Check& back) const;
    /// Gives a delivered check another content.
    /// @throws Failure also when it is not delivered
    void rewrite(const Check& check) const;

    /// What a check that was read is. @throws Failure when it is damaged
    static Check checkOf(const orvastore::KeptCheck& kept);

private:
    SharedStore& store;
};

} // namespace till

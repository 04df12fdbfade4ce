// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/record.h"
#include "till/recording/recordtarget.h"

#include <utility>

namespace till {

/// Keeps records in memory.
class MemoryTarget : public RecordTarget
{
public:
    void begin(QJsonObject header) override
    {
        kept.append(Record{std::move(header), {}, {}, false, {}});
    }
    void add(const QJsonObject& line) override { kept.last().add(line); }

    const QList<Record>& records() const { return kept; }

private:
    QList<Record> kept;
};

} // namespace till

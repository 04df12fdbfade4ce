// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>

namespace till {

/// Where records go: a file while the till works, memory while a record is replayed.
class RecordTarget
{
public:
    virtual ~RecordTarget() = default;

    /// Begins a record. @param header its first line; the target adds the number
    virtual void begin(QJsonObject header) = 0;
    /// Adds a line to it. @throws std::exception when it cannot be kept
    virtual void add(const QJsonObject& line) = 0;
};

} // namespace till

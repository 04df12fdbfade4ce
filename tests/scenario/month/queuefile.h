// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/month/verdict.h"

#include <QList>
#include <QString>

namespace month {

/// What stands in a till's queue, read from its file.
struct QueueFile
{
    QList<Queued> messages; ///< undelivered, first in, first
    qint64 firstNumber = 0; ///< of the first of them
    qint64 delivered = 0;   ///< how many others there are

    /// @throws std::runtime_error when the file cannot be read
    static QueueFile read(const QString& database);
};

} // namespace month

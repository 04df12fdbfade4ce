// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace Log4Qt {

class Logger;

/// Hands out the loggers of the process by name.
class LogManager
{
public:
    /// Returns the one logger of that name, made on first use and never destroyed. Safe to call
    /// from any thread.
    static Logger* logger(const QString& name);
};

} // namespace Log4Qt

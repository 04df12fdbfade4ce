// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <log4qt/logmanager.h>

/// The logger of that name. Some versions of the library look loggers up by name and a second text,
/// which stays empty here; the released one knows the name only. What it offers is found out here,
/// when this is compiled, and nowhere else.
template <typename Manager = Log4Qt::LogManager>
auto* findLogger(const QString& name)
{
    if constexpr (requires { Manager::logger(name, QString()); }) {
        return Manager::logger(name, QString());
    } else {
        return Manager::logger(name);
    }
}

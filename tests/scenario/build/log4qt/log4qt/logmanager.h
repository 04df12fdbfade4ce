// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace Log4Qt {

class Logger;

class LogManager
{
public:
    static Logger* rootLogger();
    static Logger* logger(const QString& name);
#if LOG4QT_ARGUMENTS == 2
    static Logger* logger(const QString& name, const QString& second);
#endif
};

} // namespace Log4Qt

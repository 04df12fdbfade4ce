// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "log4qt/logmanager.h"

#include "log4qt/logger.h"

#include <QHash>
#include <QMutex>

namespace Log4Qt {

Logger* LogManager::logger(const QString& name)
{
    // Never destroyed: a plug-in's logger must outlive every static that may still log.
    static auto* const mutex = new QMutex;
    static auto* const loggers = new QHash<QString, Logger*>;
    const QMutexLocker lock(mutex);
    Logger*& logger = (*loggers)[name];
    if (logger == nullptr) {
        logger = new Logger(name);
    }
    return logger;
}

} // namespace Log4Qt

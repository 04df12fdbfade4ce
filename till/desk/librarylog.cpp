// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/librarylog.h"

#ifdef ORVA_WITH_LOG4QT

#include <QLoggingCategory>

#include <log4qt/appenderskeleton.h>
#include <log4qt/logger.h>
#include <log4qt/loggingevent.h>
#include <log4qt/logmanager.h>

using namespace Qt::StringLiterals;

namespace till::librarylog {
namespace {

class Console : public Log4Qt::AppenderSkeleton
{
public:
    bool requiresLayout() const override { return false; }

protected:
    void append(const Log4Qt::LoggingEvent& event) override
    {
        static const QLoggingCategory category("orva");
        const QMessageLogger line(nullptr, 0, nullptr, category.categoryName());
        const Log4Qt::Level level = event.level();
        if (level < Log4Qt::Level(Log4Qt::Level::INFO_INT)) {
            if (category.isDebugEnabled()) {
                line.debug().noquote() << event.message();
            }
        } else if (level < Log4Qt::Level(Log4Qt::Level::ERROR_INT)) {
            if (category.isInfoEnabled()) {
                line.info().noquote() << event.message();
            }
        } else if (category.isCriticalEnabled()) {
            line.critical().noquote() << event.message();
        }
    }
};

} // namespace

bool isKnown()
{
    return true;
}

void giveConsole()
{
    Log4Qt::Logger* const logger = Log4Qt::LogManager::logger(u"orva"_s);
    if (!logger->appenders().isEmpty() ||
        !Log4Qt::LogManager::rootLogger()->appenders().isEmpty()) {
        return;
    }
    const Log4Qt::AppenderSharedPtr console(new Console);
    logger->setLevel(Log4Qt::Level(Log4Qt::Level::DEBUG_INT)); // Qt's switches decide
    logger->addAppender(console);
}

} // namespace till::librarylog

#else

namespace till::librarylog {

bool isKnown()
{
    return false;
}

void giveConsole() {}

} // namespace till::librarylog

#endif

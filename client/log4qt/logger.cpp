// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "log4qt/logger.h"

#include <QMessageLogger>

namespace Log4Qt {

Logger::Logger(const QString& name) : encodedName(name.toUtf8()), category(encodedName.constData())
{}

void Logger::writeLine(QtMsgType type, const QString& text) const
{
    const QMessageLogger line(nullptr, 0, nullptr, category.categoryName());
    // noquote: the text is the line, as Log4Qt writes it
    switch (type) {
    case QtDebugMsg:
        line.debug().noquote() << text;
        break;
    case QtInfoMsg:
        line.info().noquote() << text;
        break;
    default:
        line.critical().noquote() << text;
        break;
    }
}

} // namespace Log4Qt

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "log4qt/logger.h"

#include <QMessageLogger>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace Log4Qt {

namespace {

/// A log is sent on to others: whoever stands in an address before the "@" stays out of it.
QString withoutUsers(QString text)
{
    static const QRegularExpression user(u"://[^/?#\\s]*@"_s);
    return text.contains("://"_L1) ? text.replace(user, u"://***@"_s) : text;
}

} // namespace

Logger::Logger(const QString& name) : encodedName(name.toUtf8()), category(encodedName.constData())
{}

void Logger::writeLine(QtMsgType type, const QString& text) const
{
    const QString shown = withoutUsers(text);
    const QMessageLogger line(nullptr, 0, nullptr, category.categoryName());
    // noquote: the text is the line, as Log4Qt writes it
    switch (type) {
    case QtDebugMsg:
        line.debug().noquote() << shown;
        break;
    case QtInfoMsg:
        line.info().noquote() << shown;
        break;
    default:
        line.critical().noquote() << shown;
        break;
    }
}

} // namespace Log4Qt

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/language.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace console {

namespace {

QString spoken = u"en"_s;

/// Without a locale a program speaks to nobody in particular.
bool isNobodys(const QString& locale)
{
    return locale.isEmpty() || locale == "C"_L1 || locale == "POSIX"_L1;
}

QString localeOfMessages()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QString locale = qEnvironmentVariable(variable);
        if (!locale.isEmpty()) {
            return locale;
        }
    }
    return {};
}

} // namespace

QString languageOfEnvironment()
{
    const QString locale = localeOfMessages();
    if (isNobodys(locale)) {
        return u"en"_s;
    }
    const QString list = qEnvironmentVariable("LANGUAGE");
    for (const QString& name : (list.isEmpty() ? locale : list).split(u':', Qt::SkipEmptyParts)) {
        static const QRegularExpression behindLanguage(u"[_.@-]"_s);
        const QString language = name.section(behindLanguage, 0, 0);
        if (language == "ru"_L1 || language == "en"_L1) {
            return language;
        }
        if (isNobodys(language)) {
            break;
        }
    }
    return u"en"_s;
}

QString spokenLanguage()
{
    return spoken;
}

void speakUsersLanguage()
{
    // with the application as parent it goes when the application goes
    auto* const translator = new QTranslator(QCoreApplication::instance());
    spoken = languageOfEnvironment();
    if (translator->load(u":/translations/orva_"_s + spoken)) {
        QCoreApplication::installTranslator(translator);
    }
}

} // namespace console

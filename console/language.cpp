// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/language.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace console {

QString languageFor(const QStringList& uiLanguages)
{
    for (const QString& tag : uiLanguages) {
        const QString language = tag.section(u'-', 0, 0);
        if (language == u"ru"_s || language == u"en"_s) {
            return language;
        }
    }
    return u"en"_s;
}

void speakUsersLanguage()
{
    // with the application as parent it goes when the application goes
    auto* const translator = new QTranslator(QCoreApplication::instance());
    const QString language = languageFor(QLocale::system().uiLanguages());
    if (translator->load(u":/translations/orva_"_s + language)) {
        QCoreApplication::installTranslator(translator);
    }
}

} // namespace console

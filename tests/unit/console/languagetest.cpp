// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/language.h"

#include <QLocale>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using console::languageFor;

TEST(Language, isTheFirstOneThatThePersonReadsAndTheProgramsSpeak)
{
    EXPECT_EQ(languageFor({u"ru-RU"_s, u"en-US"_s}), u"ru"_s);
    EXPECT_EQ(languageFor({u"en-GB"_s, u"ru"_s}), u"en"_s);
    EXPECT_EQ(languageFor({u"tt-RU"_s, u"ru-RU"_s}), u"ru"_s);
}

TEST(Language, isEnglishForEverybodyElse)
{
    EXPECT_EQ(languageFor({u"de-DE"_s}), u"en"_s);
    EXPECT_EQ(languageFor({u"C"_s}), u"en"_s);
    EXPECT_EQ(languageFor({u"rue-UA"_s}), u"en"_s);
    EXPECT_EQ(languageFor({}), u"en"_s);
}

TEST(Language, isNamedByTheEnvironmentBeforeTheLocale)
{
    // set for all tests, so that they read English under the Russian locale too
    ASSERT_EQ(qgetenv("LANGUAGE"), "en");
    EXPECT_EQ(languageFor(QLocale::system().uiLanguages()), u"en"_s);
}

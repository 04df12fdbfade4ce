// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/language.h"
#include "tests/support/environmentvariable.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The language under these variables.
QString languageUnder(const QByteArray& language, const QByteArray& all, const QByteArray& messages,
                      const QByteArray& lang)
{
    const EnvironmentVariable list("LANGUAGE", language);
    const EnvironmentVariable everything("LC_ALL", all);
    const EnvironmentVariable texts("LC_MESSAGES", messages);
    const EnvironmentVariable rest("LANG", lang);
    return console::languageOfEnvironment();
}

} // namespace

TEST(Language, isThatOfTheFirstVariableOfTheLocaleThatIsNotEmpty)
{
    EXPECT_EQ(languageUnder("", "ru_RU.UTF-8", "en_US.UTF-8", "en_US.UTF-8"), u"ru"_s);
    EXPECT_EQ(languageUnder("", "en_US.UTF-8", "ru_RU.UTF-8", "ru_RU.UTF-8"), u"en"_s);
    EXPECT_EQ(languageUnder("", "", "ru_RU.UTF-8", "en_US.UTF-8"), u"ru"_s);
    EXPECT_EQ(languageUnder("", "", "", "ru_RU"), u"ru"_s);
    EXPECT_EQ(languageUnder("", "", "", "ru@cyrillic"), u"ru"_s);
}

TEST(Language, isTheFirstOfTheListThatTheProgramsSpeak)
{
    EXPECT_EQ(languageUnder("ru", "", "", "en_US.UTF-8"), u"ru"_s);
    EXPECT_EQ(languageUnder("en:ru", "ru_RU.UTF-8", "", ""), u"en"_s);
    EXPECT_EQ(languageUnder("tt:ru_RU:en", "", "en_US.UTF-8", ""), u"ru"_s);
    EXPECT_EQ(languageUnder(":ru", "", "", "en_US.UTF-8"), u"ru"_s);
    // who lists others only gets the texts as they were written
    EXPECT_EQ(languageUnder("de:fr", "ru_RU.UTF-8", "", ""), u"en"_s);
    EXPECT_EQ(languageUnder("C:ru", "ru_RU.UTF-8", "", ""), u"en"_s);
}

TEST(Language, isEnglishWithoutALocaleWhateverTheList)
{
    EXPECT_EQ(languageUnder("ru", "C", "", "ru_RU.UTF-8"), u"en"_s);
    EXPECT_EQ(languageUnder("ru", "", "POSIX", "ru_RU.UTF-8"), u"en"_s);
    EXPECT_EQ(languageUnder("ru", "", "", ""), u"en"_s);
    // it has an encoding in which every text can be written
    EXPECT_EQ(languageUnder("ru", "C.UTF-8", "", ""), u"ru"_s);
}

TEST(Language, isEnglishForEverybodyElse)
{
    EXPECT_EQ(languageUnder("", "de_DE.UTF-8", "", "ru_RU.UTF-8"), u"en"_s);
    EXPECT_EQ(languageUnder("", "rue_UA", "", ""), u"en"_s);
    EXPECT_EQ(languageUnder("", "", "", "C.UTF-8"), u"en"_s);
}

TEST(Language, ofTheTestsIsEnglishUnderEveryLocale)
{
    // the Russian locale keeps its decimal comma in them
    ASSERT_EQ(qgetenv("LANGUAGE"), "en");
    EXPECT_EQ(console::languageOfEnvironment(), u"en"_s);
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/runningcase.h"
#include "till/desk/librarylog.h"

#include <QCoreApplication>

#include <clocale>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    // tests read the programs' English texts, whatever the locale; its decimal comma stays
    qputenv("LANGUAGE", "en");
    const QCoreApplication application(argc, argv);
    // the application object has taken the locale from the environment, as it does in a till
    if (qEnvironmentVariableIsSet("ORVA_EXPECT_DECIMAL_COMMA") &&
        std::strcmp(std::localeconv()->decimal_point, ",") != 0) {
        std::fprintf(stderr,
                     "The locale \"%s\" has no decimal comma here: make it with "
                     "\"localedef -i ru_RU -f UTF-8 ru_RU.UTF-8\"\n",
                     std::setlocale(LC_ALL, nullptr));
        return 1;
    }
    till::librarylog::giveConsole();
    contract::nameTheCaseThatDies(qEnvironmentVariableIntValue("ORVA_CASE_SECONDS"));
    return RUN_ALL_TESTS();
}

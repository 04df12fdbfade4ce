// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/console/russian.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

Russian::Russian()
{
    EXPECT_TRUE(texts.load(QStringLiteral(":/translations/orva_ru")));
    QCoreApplication::installTranslator(&texts);
}

Russian::~Russian()
{
    QCoreApplication::removeTranslator(&texts);
}

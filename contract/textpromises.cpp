// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/subject.h"

#include "host/core/basicexception.h"
#include "host/core/tr.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

using namespace Qt::StringLiterals;

void contract::addTextPromises() {}

namespace {

TEST(Text, KeepsIdentifierAndRussianWording)
{
    const tr::Tr text(u"orvaNoCard"_s, u"Карта не найдена"_s);
    EXPECT_EQ(text.id(), u"orvaNoCard"_s);
    EXPECT_EQ(text.ru(), u"Карта не найдена"_s);
    const tr::Tr copy = text;
    EXPECT_EQ(copy.id(), text.id());
    EXPECT_EQ(copy.ru(), text.ru());
    EXPECT_TRUE(copy == text);
    EXPECT_FALSE(copy.isEmpty());
    EXPECT_TRUE(tr::Tr().isEmpty());
}

TEST(Exception, KeepsItsText)
{
    const BasicException error(tr::Tr(u"code"_s, u"Причина"_s));
    EXPECT_EQ(error.tr().id(), u"code"_s);
    EXPECT_EQ(error.tr().ru(), u"Причина"_s);
    EXPECT_EQ(std::string(error.what()), u"code: Причина"_s.toStdString());
}

TEST(Exception, IsCaughtAsARuntimeError)
{
    EXPECT_THROW(throw BasicException(tr::Tr(u"code"_s, u"Причина"_s)), std::runtime_error);
}

} // namespace

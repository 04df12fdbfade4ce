// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/subject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addSessionPromises() {}

namespace contract {
namespace {

TEST(SessionContract, GivesTheDocumentThatTheHostWorksOn)
{
    const auto document = subject().makeDocument({});
    const auto session = subject().makeSession(document, u"shift 12"_s);
    EXPECT_EQ(session->getDocument(), document);
}

TEST(SessionContract, HasNoDocumentBetweenDocuments)
{
    EXPECT_TRUE(subject().makeSession({}, {})->getDocument().isNull());
}

TEST(SessionContract, ItsContextIsNeverNullAndItsValueReadsAsText)
{
    const auto session = subject().makeSession({}, u"shift 12"_s);
    ASSERT_FALSE(session->getSessionContext().isNull());
    EXPECT_EQ(session->getSessionContext()->getContextValue().toString(), u"shift 12"_s);
    Session fresh;
    EXPECT_FALSE(fresh.getSessionContext().isNull());
}

} // namespace
} // namespace contract

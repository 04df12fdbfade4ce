// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "tests/support/configured.h"

#include <gtest/gtest.h>
#include <string>

using namespace Qt::StringLiterals;

inline QVariant single(poshost::Database& database, const QString& sql)
{
    poshost::Statement statement(database, sql);
    return statement.next() ? statement.value(0) : QVariant();
}

/// The text of the "databaseError" that the work ends with.
template <typename Work>
std::string databaseErrorOf(const Work& work)
{
    try {
        work();
    } catch (const BasicException& error) {
        EXPECT_EQ(error.tr().id(), u"databaseError"_s);
        return error.tr().ru().toStdString();
    }
    ADD_FAILURE() << "no error";
    return {};
}

/// A folder of the test's own with a till's database in it.
class DatabaseFile : public ::testing::Test
{
protected:
    /// A second table with a value or two, to write to.
    static void addTable(poshost::Database& database) { database.execute(u"CREATE TABLE t (a)"_s); }

    TestFolder folder;
    const QString file = folder.file(u"till.db"_s);
};

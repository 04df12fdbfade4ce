// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/configfile.h"

#include "tests/unit/till/tilltest.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// A current folder of the test's own.
class ConfigFileTest : public ::testing::Test
{
protected:
    ConfigFileTest() { QDir::setCurrent(folder.file(u"."_s)); }
    ~ConfigFileTest() override { QDir::setCurrent(former); }

    const QString former = QDir::currentPath();
    TestFolder folder;
    const QString machine = folder.file(u"machine.toml"_s);
};

} // namespace

TEST_F(ConfigFileTest, theOneInTheCurrentFolderComesFirst)
{
    folder.write(u"machine.toml"_s, u"\n"_s);
    EXPECT_EQ(till::configfile::found(machine), machine);
    folder.write(u"orva.toml"_s, u"\n"_s);
    EXPECT_EQ(till::configfile::found(machine), u"orva.toml"_s);
}

TEST_F(ConfigFileTest, whereThereIsNoneNoneIsFound)
{
    EXPECT_EQ(till::configfile::found(machine), QString());
    EXPECT_EQ(till::configfile::ofMachine(), u"/etc/orva/orva.toml"_s);
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/knownkeys.h"

#include "host/database/database.h"
#include "tests/support/configured.h"
#include "tests/support/pluginkeys.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using poshost::ConfigKey;
namespace knownkeys = poshost::knownkeys;

namespace {

/// An owner whose keys are forgotten again.
class Shelf
{
public:
    explicit Shelf(const QList<ConfigKey>& keys) { knownkeys::registerKeys(u"shelf"_s, keys); }
    ~Shelf() { knownkeys::registerKeys(u"shelf"_s, {}); }
    Shelf(const Shelf&) = delete;
    Shelf& operator=(const Shelf&) = delete;
};

TEST(KnownKeys, areThoseOfThePluginOfTheHostAndOfWhoeverRegisters)
{
    EXPECT_EQ(knownkeys::tables().first(), u"http"_s);
    const PluginKeys plugin(QStringLiteral(ORVA_PLUGIN_SOURCE));
    const Shelf shelf({{.table = u"shelf"_s, .key = u"height"_s, .kind = ConfigKey::Kind::Number}});
    EXPECT_EQ(knownkeys::tables(),
              QStringList({u"Orva"_s, u"http"_s, u"queue"_s, u"store"_s, u"till"_s, u"recording"_s,
                           u"verify"_s, u"shelf"_s}));
    const Configured configured("[shelf]\nheight = 3\n");
    EXPECT_TRUE(Singleton<Config>::instance->warnings().isEmpty());
    Config config;
    TestFolder folder;
    EXPECT_EQ(config.examine(folder.write(u"wrong.toml"_s, "[shelf]\nheight = \"3\"\n")).size(), 1);
}

TEST(KnownKeys, ofAnOwnerReplaceThoseThatItRegisteredBefore)
{
    const Shelf first({{.table = u"shelf"_s, .key = u"height"_s}});
    {
        const Shelf second({{.table = u"shelf"_s, .key = u"width"_s}});
        EXPECT_EQ(knownkeys::keysOf(u"shelf"_s), QStringList({u"width"_s}));
    }
    EXPECT_FALSE(knownkeys::tables().contains(u"shelf"_s));
}

TEST(KnownKeys, areFoundByTheirUse)
{
    EXPECT_EQ(knownkeys::find(ConfigKey::Use::Database)->name(), u"till:database"_s);
    EXPECT_FALSE(knownkeys::find(ConfigKey::Use::ServerAddress));
    const PluginKeys plugin(QStringLiteral(ORVA_PLUGIN_SOURCE));
    EXPECT_EQ(knownkeys::find(ConfigKey::Use::ServerAddress)->name(), u"Orva:serverUrl"_s);
    EXPECT_EQ(knownkeys::find(ConfigKey::Use::Timeout)->name(), u"Orva:timeout"_s);
    EXPECT_EQ(knownkeys::find(ConfigKey::Use::Credential)->name(), u"Orva:user"_s);
}

TEST(KnownKeys, leadToTheDatabaseWhateverItsKeyIsCalled)
{
    const QList<ConfigKey> tills = knownkeys::of(u"till"_s);
    ASSERT_FALSE(tills.isEmpty());
    knownkeys::registerKeys(u"till"_s, {});
    const Configured configured("[till]\ndatabase = \"/a\"\n[shelf]\nbooks = \"/b\"\n");
    EXPECT_EQ(poshost::Database::configuredFile(), QString());
    const Shelf shelf({{.table = u"shelf"_s,
                        .key = u"books"_s,
                        .kind = ConfigKey::Kind::Path,
                        .use = ConfigKey::Use::Database}});
    EXPECT_EQ(poshost::Database::configuredFile(), u"/b"_s);
    knownkeys::registerKeys(u"till"_s, tills);
}

/// Each sheet in the tree says enough for README, doctor and configuration.
TEST(KnownKeys, haveWholeSheets)
{
    const PluginKeys plugin(QStringLiteral(ORVA_PLUGIN_SOURCE));
    EXPECT_EQ(knownkeys::all().size(), 33);
    for (const ConfigKey& key : knownkeys::all()) {
        SCOPED_TRACE(key.name().toStdString());
        EXPECT_FALSE(key.about.isEmpty());
        EXPECT_TRUE(key.isRequired || key.defaultValue.isValid() || !key.without.isEmpty());
        EXPECT_TRUE(!key.defaultValue.isValid() || key.without.isEmpty());
        const bool isNumber = key.kind == ConfigKey::Kind::Number;
        EXPECT_EQ(key.unit.isEmpty(), !isNumber);
        if (isNumber) {
            EXPECT_GE(key.defaultValue.toInt(), key.minimum);
        }
        TestFolder folder;
        folder.write(u"password"_s, "x");
        folder.write(u"apikey"_s, "x");
        Config config;
        EXPECT_NO_THROW(config.load(folder.write(
            u"orva.toml"_s, u"[%1]\n%2 = %3\n"_s.arg(key.table, key.key, key.sample).toUtf8())));
        EXPECT_TRUE(config.contains(key.name())) << key.sample.toStdString();
    }
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/keysheet.h"

#include "host/config/knownkeys.h"
#include "host/core/basicexception.h"
#include "host/services/config.h"
#include "tests/support/testfolder.h"

#include <QFile>
#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using poshost::ConfigKey;
using ::testing::HasSubstr;
using ::testing::StartsWith;
namespace keysheet = poshost::keysheet;
namespace knownkeys = poshost::knownkeys;

namespace {

const QByteArray wholeSheet = "table = \"Shop\"\n"
                              "later = 5\n"
                              "[[key]]\nname = \"zone\"\ntype = \"text\"\nabout = \"where\"\n"
                              "sample = '\"a\"'\ndefault = \"b\"\nuse = \"other\"\n"
                              "[[key]]\nname = \"age\"\ntype = \"number\"\nabout = \"how old\"\n"
                              "sample = '7'\ndefault = 7\nunit = \"years\"\nminimum = 3\n"
                              "required = true\nuse = \"timeout\"\n";

/// A folder with a plug-in's file in it, and perhaps its sheet.
class KeySheet : public ::testing::Test
{
protected:
    ~KeySheet() override { keysheet::registerPlugin(QString()); }

    std::string refusalOf(const QByteArray& sheet)
    {
        folder.write(u"libshop.keys.toml"_s, sheet);
        return refusal();
    }

    std::string refusal()
    {
        try {
            keysheet::registerPlugin(plugin);
        } catch (const BasicException& error) {
            EXPECT_EQ(error.tr().id(), u"configError"_s);
            EXPECT_TRUE(knownkeys::of(keysheet::owner()).isEmpty());
            return error.tr().ru().remove(folder.file(QString()) + u'/').toStdString();
        }
        ADD_FAILURE() << "no error";
        return {};
    }

    QStringList warningsAbout(const QByteArray& toml)
    {
        Config config;
        config.load(folder.write(u"orva.toml"_s, toml));
        return config.warnings();
    }

    TestFolder folder;
    const QString plugin = folder.write(u"libshop.so"_s, "no library is loaded for it");
};

TEST_F(KeySheet, SaysWhichKeysThePluginReads)
{
    folder.write(u"libshop.keys.toml"_s, wholeSheet);
    keysheet::registerPlugin(plugin);
    EXPECT_EQ(knownkeys::keysOf(u"Shop"_s), QStringList({u"zone"_s, u"age"_s})) << "in its order";
    const ConfigKey zone = *knownkeys::find(u"Shop"_s, u"zone"_s);
    EXPECT_EQ(zone.kind, ConfigKey::Kind::Text);
    EXPECT_EQ(zone.about, u"where"_s);
    EXPECT_EQ(zone.sample, u"\"a\""_s);
    EXPECT_EQ(zone.defaultValue, QVariant(u"b"_s));
    EXPECT_FALSE(zone.isRequired);
    EXPECT_EQ(zone.use, ConfigKey::Use::None) << "a use that this host does not know";
    const ConfigKey age = *knownkeys::find(u"Shop"_s, u"age"_s);
    EXPECT_EQ(age.kind, ConfigKey::Kind::Number);
    EXPECT_EQ(age.defaultValue, QVariant(7));
    EXPECT_EQ(age.unit, u"years"_s);
    EXPECT_EQ(age.minimum, 3);
    EXPECT_TRUE(age.isRequired);
    EXPECT_EQ(age.use, ConfigKey::Use::Timeout);
    Config config;
    EXPECT_EQ(config.examine(folder.write(u"orva.toml"_s, "[Shop]\nage = 2\n")).size(), 1);
}

TEST_F(KeySheet, IsFoundWhereALinkLeadsTo)
{
    folder.write(u"libshop.keys.toml"_s, wholeSheet);
    const QString link = folder.file(u"current.so"_s);
    ASSERT_TRUE(QFile::link(plugin, link));
    EXPECT_EQ(keysheet::fileOf(link), folder.file(u"libshop.keys.toml"_s));
    EXPECT_EQ(keysheet::fileOf(folder.file(u"libshop"_s)), folder.file(u"libshop.keys.toml"_s))
        << "as the loader finds the plug-in without its ending";
    EXPECT_EQ(keysheet::fileOf(folder.file(u"libother.so"_s)), QString());
    EXPECT_EQ(keysheet::fileOf(QString()), QString());
}

TEST_F(KeySheet, ThatIsNotThereLeavesThePluginsTableAlone)
{
    keysheet::registerPlugin(plugin);
    EXPECT_EQ(warningsAbout("[Shop]\nzone = \"a\"\n"), QStringList());
    ASSERT_EQ(warningsAbout("[quue]\n").size(), 1) << "nearly one of the host's";
    folder.write(u"libshop.keys.toml"_s, wholeSheet);
    keysheet::registerPlugin(plugin);
    EXPECT_EQ(warningsAbout("[Shop]\nzone = \"a\"\n"), QStringList());
    EXPECT_EQ(warningsAbout("[elsewhere]\n").size(), 1);
    keysheet::registerPlugin(folder.file(u"libother.so"_s));
    EXPECT_TRUE(knownkeys::of(keysheet::owner()).isEmpty()) << "another plug-in's";
}

TEST_F(KeySheet, ThatIsDamagedIsNamedWithWhatIsWrong)
{
    const QByteArray key = "table = \"Shop\"\n[[key]]\n";
    const std::pair<QByteArray, std::string> rows[] = {
        {"table = ", "строка 1: не по правилам TOML"},
        {"", "ожидаются table и [[key]]"},
        {"table = \"Shop\"\nkey = [1]\n", "ожидаются table и [[key]]"},
        {key, "строка 2: у ключа нет name"},
        {key + "name = \"a\"\nabout = \"b\"\nsample = '1'\n", "строка 2: у ключа нет type"},
        {key + "name = \"a\"\nabout = \"b\"\nsample = '1'\ntype = \"real\"\n",
         "строка 2: тип real неизвестен"},
        {QByteArray(65537, '#'), "это не обычный файл или он больше 65536 байт"},
        {QByteArray(wholeSheet).replace("Shop", "queue"), "таблица [queue] занята"},
    };
    for (const auto& [sheet, what] : rows) {
        EXPECT_EQ(refusalOf(sheet), "libshop.keys.toml: описание ключей плагина: " + what +
                                        "; переустановите плагин");
    }
    EXPECT_THAT(refusalOf("a = " + QByteArray(65, '[')), HasSubstr("вложены глубже 64 уровней"));
}

TEST_F(KeySheet, ThatIsNoRegularFileIsRefusedAtOnce)
{
    const QString pipe = folder.file(u"libshop.keys.toml"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_THAT(refusal(), HasSubstr("это не обычный файл"));
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What is said of configuration keys, held to their sheets.

#include "host/config/knownkeys.h"

#include "host/services/config.h"
#include "tests/support/pluginkeys.h"
#include "till/commands/commandline.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using poshost::ConfigKey;
namespace knownkeys = poshost::knownkeys;

namespace {

QString read(const QString& fileName)
{
    QFile file(fileName);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << fileName.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// A key as README's tables have it; those of the plug-in's table stand without a name for it.
struct ReadmeRow
{
    QString name;
    QString meaning; ///< without its links
    QString without;
};

QList<ReadmeRow> readmeRows(const QString& tableOfPlugin)
{
    const QString section = read(QStringLiteral(ORVA_SOURCES "/README.md"))
                                .section(u"## Configuration"_s, 1)
                                .section(u"\n## "_s, 0, 0);
    static const QRegularExpression row(
        u"^\\| `(?:\\[(\\w+)\\] )?(\\w+)` \\| (.+) \\| ([^|]+) \\|$"_s,
        QRegularExpression::MultilineOption);
    static const QRegularExpression link(u"\\[([^\\]]+)\\]\\([^)]+\\)"_s);
    QList<ReadmeRow> rows;
    for (const auto& match : row.globalMatch(section)) {
        const QString table = match.captured(1).isEmpty() ? tableOfPlugin : match.captured(1);
        rows.append({table + u':' + match.captured(2), match.captured(3).replace(link, u"\\1"_s),
                     match.captured(4)});
    }
    return rows;
}

/// What holds without a key, as README's last column says it.
QString withoutKey(const ConfigKey& key)
{
    if (!key.defaultValue.isValid()) {
        return key.without.isEmpty() ? u"none"_s : key.without;
    }
    return key.kind == ConfigKey::Kind::Number
               ? u"%1 %2"_s.arg(key.defaultValue.toInt()).arg(key.unit)
               : u"`%1`"_s.arg(key.defaultValue.toString());
}

/// Lines of the sources in a folder that name somebody else's; the heads name the developers.
QStringList linesWith(const QString& folder, const QRegularExpression& name)
{
    QStringList found;
    int files = 0;
    QDirIterator it(QStringLiteral(ORVA_SOURCES) + u'/' + folder,
                    {u"*.cpp"_s, u"*.h"_s, u"CMakeLists.txt"_s}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        ++files;
        const QStringList lines = read(file).split(u'\n');
        for (const QString& line : lines) {
            if (line.contains(name) && !line.contains(u"SPDX-FileCopyrightText"_s)) {
                found.append(file + u": "_s + line);
            }
        }
    }
    EXPECT_GT(files, 50) << folder.toStdString();
    return found;
}

class KeyPromises : public ::testing::Test
{
protected:
    const PluginKeys keys{QStringLiteral(ORVA_PLUGIN_FILE)};
};

} // namespace

TEST_F(KeyPromises, ofTheReadmeAreThoseOfTheSheets)
{
    const QList<ConfigKey> known = knownkeys::all();
    ASSERT_EQ(knownkeys::of(poshost::keysheet::owner()).size(), 7);
    const QList<ReadmeRow> rows = readmeRows(known.first().table);
    ASSERT_EQ(rows.size(), known.size());
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].name.toStdString(), known[i].name().toStdString());
        EXPECT_TRUE(rows[i].meaning.startsWith(known[i].about))
            << rows[i].name.toStdString() << ": the sheet says \"" << known[i].about.toStdString()
            << '"';
        EXPECT_EQ(rows[i].without.toStdString(), withoutKey(known[i]).toStdString())
            << rows[i].name.toStdString();
    }
}

TEST_F(KeyPromises, ofTheHelpNameKnownKeys)
{
    const char* const words[] = {"orva-till", "--help"};
    till::Options options;
    ::testing::internal::CaptureStdout();
    till::readCommandLine(2, words, options);
    const QString help = QString::fromStdString(::testing::internal::GetCapturedStdout());
    static const QRegularExpression name(u"(\\w+)\\s+in\\s+\\[(\\w+)\\]"_s);
    int named = 0;
    for (const auto& match : name.globalMatch(help)) {
        ++named;
        EXPECT_TRUE(knownkeys::find(match.captured(2), match.captured(1)))
            << match.captured().toStdString();
    }
    EXPECT_EQ(named, 2) << help.toStdString();
}

TEST_F(KeyPromises, ofTheExampleAreKeptWhole)
{
    Config config;
    config.load(QStringLiteral(ORVA_SOURCES "/till/examples/orva.toml"));
    for (const QString& warning : config.warnings()) {
        EXPECT_TRUE(warning.contains(u"chmod"_s)) << warning.toStdString();
    }
    for (const ConfigKey& key : knownkeys::all()) {
        EXPECT_TRUE(!key.isRequired || config.contains(key.name())) << key.name().toStdString();
    }
}

TEST(KeyOwners, ofATableAreTheOnlyOnesThatNameIt)
{
    EXPECT_EQ(linesWith(u"till"_s, QRegularExpression(u"\\bOrva\\b"_s)).join(u'\n').toStdString(),
              "");
    EXPECT_EQ(
        linesWith(u"host"_s, QRegularExpression(u"\\bOrva\\b|\\[till\\]|\\[recording\\]|\"till:|"
                                                "\"recording:|TABLE checks"_s))
            .join(u'\n')
            .toStdString(),
        "");
}

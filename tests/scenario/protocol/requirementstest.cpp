// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// protocol/requirements.toml holds the requirements of docs/protocol.md, word by word.
// ORVA_UPDATE_PROTOCOL=1 writes it anew from the page.

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>
#include <toml++/toml.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const QString page = QStringLiteral(ORVA_SOURCE_FOLDER "/docs/protocol.md");
const QString dataFile = QStringLiteral(ORVA_SOURCE_FOLDER "/protocol/requirements.toml");

struct Requirement
{
    QString name;
    QString level;
    QString anchor;
    QString sentence;

    friend bool operator==(const Requirement&, const Requirement&) = default;
};

void PrintTo(const Requirement& requirement, std::ostream* out)
{
    *out << qPrintable(requirement.name) << " (" << qPrintable(requirement.level) << ", #"
         << qPrintable(requirement.anchor) << "): " << qPrintable(requirement.sentence);
}

QString contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

std::vector<Requirement> ofThePage()
{
    static const QRegularExpression entry(
        u"^- <a id=\"([^\"]*)\"></a>\\*\\*`([a-z0-9-]+)`\\*\\* \\((must|should)\\): (.*(?:\\n  .*)*)"_s,
        QRegularExpression::MultilineOption);
    std::vector<Requirement> found;
    for (auto it = entry.globalMatch(contentOf(page)); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        found.push_back({match.captured(2), match.captured(3), match.captured(1),
                         match.captured(4).simplified()});
    }
    return found;
}

std::vector<Requirement> ofTheDataFile()
{
    const toml::table list = toml::parse_file(dataFile.toStdString());
    std::vector<Requirement> found;
    for (const toml::node& node : *list["requirement"].as_array()) {
        const toml::table& entry = *node.as_table();
        EXPECT_EQ(entry.size(), 4U);
        const auto text = [&](const char* key) {
            return QString::fromStdString(entry[key].value_or(std::string()));
        };
        found.push_back({text("name"), text("level"), text("anchor"), text("sentence")});
    }
    return found;
}

QString written(const std::vector<Requirement>& requirements)
{
    QString text = contentOf(dataFile).section(u"\n[[requirement]]\n"_s, 0, 0);
    for (const Requirement& requirement : requirements) {
        text += u"\n[[requirement]]\nname = \"%1\"\nlevel = \"%2\"\nanchor = \"%3\"\n"
                "sentence = '''%4'''\n"_s.arg(requirement.name, requirement.level,
                                              requirement.anchor, requirement.sentence);
    }
    return text;
}

} // namespace

TEST(Requirements, ofTheDataFileAreThoseOfThePage)
{
    const std::vector<Requirement> expected = ofThePage();
    if (qEnvironmentVariableIsSet("ORVA_UPDATE_PROTOCOL")) {
        const QString text = written(expected);
        QFile file(dataFile);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        return;
    }
    const std::vector<Requirement> actual = ofTheDataFile();
    for (size_t i = 0; i < qMin(expected.size(), actual.size()); ++i) {
        ASSERT_EQ(actual[i], expected[i]) << "ORVA_UPDATE_PROTOCOL=1 writes the file anew";
    }
    EXPECT_EQ(actual.size(), expected.size());
}

TEST(Requirements, haveNamesOfTheirOwnThatAreTheirAnchors)
{
    const std::vector<Requirement> all = ofThePage();
    ASSERT_GE(all.size(), 50U);
    static const QRegularExpression kebab(u"^[a-z][a-z0-9]*(-[a-z0-9]+)*$"_s);
    QSet<QString> names;
    for (const Requirement& requirement : all) {
        EXPECT_TRUE(kebab.match(requirement.name).hasMatch()) << qPrintable(requirement.name);
        EXPECT_EQ(requirement.anchor, requirement.name);
        EXPECT_FALSE(names.contains(requirement.name)) << qPrintable(requirement.name);
        names.insert(requirement.name);
    }
    // an entry that is written in another way would be missed
    EXPECT_EQ(contentOf(page).count(u"<a id="_s), static_cast<qsizetype>(all.size()));
}

TEST(Requirements, areOneSentenceEach)
{
    static const QRegularExpression endInside(u"[.!?] [A-ZА-Я]"_s);
    for (const Requirement& requirement : ofThePage()) {
        EXPECT_TRUE(requirement.sentence.endsWith(u'.')) << qPrintable(requirement.sentence);
        EXPECT_FALSE(endInside.match(requirement.sentence).hasMatch())
            << qPrintable(requirement.sentence);
        EXPECT_FALSE(requirement.sentence.contains(u"'''"_s)) << qPrintable(requirement.sentence);
    }
}

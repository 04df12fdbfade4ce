// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A file of rules that is followed while it changes.

#include "simulator/rules/rulesfile.h"
#include "simulator/rules/configerror.h"
#include "tests/unit/simulator/testchecks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

class FollowedRules : public testing::Test
{
protected:
    void write(const QString& name, const QByteArray& text) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }

    [[nodiscard]] QString path() const { return folder.filePath(u"shop.toml"_s); }

    /// What a look brings: "user U" for new rules, the complaint, or nothing.
    static QString look(RulesFile& file)
    {
        QString seen;
        file.look([&](const Rules& rules) { seen += u"user "_s + rules.user; },
                  [&](const QString& what) { seen += what; });
        return seen;
    }

    QTemporaryDir folder{QDir::tempPath() + u"/FollowedRules-XXXXXX"_s};
};

TEST_F(FollowedRules, areReadAgainWhenTheFileHasChanged)
{
    write(u"shop.toml"_s, "[auth]\nuser = 'a'\n");
    RulesFile file(path());
    EXPECT_EQ(file.first().user, u"a"_s);
    EXPECT_EQ(look(file), QString());
    write(u"shop.toml"_s, "[auth]\nuser = 'b'\n"); // as long as before, in the same moment
    EXPECT_EQ(look(file), u"user b"_s);
    EXPECT_EQ(look(file), QString());
    QFile::remove(path());
    write(u"new.toml"_s, "[auth]\nuser = 'c'\n"); // as editors save
    ASSERT_TRUE(QFile::rename(folder.filePath(u"new.toml"_s), path()));
    EXPECT_EQ(look(file), u"user c"_s);
}

TEST_F(FollowedRules, stayAsTheyWereWhenTheNewOnesAreBrokenAndItIsSaidOnceWithLineAndKey)
{
    write(u"shop.toml"_s, "[auth]\nuser = 'a'\n");
    RulesFile file(path());
    write(u"shop.toml"_s, "\n[auth]\nusr = 'b'\n");
    EXPECT_EQ(look(file),
              path() + u":3: the key \"auth.usr\" is unknown: did you mean \"auth.user\"?"_s);
    EXPECT_EQ(look(file), QString());
    write(u"shop.toml"_s, "\n[auth\n");
    EXPECT_TRUE(look(file).startsWith(path() + u":2: this is not TOML: "_s));
    write(u"shop.toml"_s, "[auth]\nuser = 'c'\n");
    EXPECT_EQ(look(file), u"user c"_s);
}

TEST_F(FollowedRules, areNotTakenFromAFileThatIsJustBeingWritten)
{
    write(u"shop.toml"_s, "[auth]\nuser = 'a'\n");
    RulesFile file(path());
    write(u"shop.toml"_s, "");
    EXPECT_EQ(look(file), QString());
    QFile::remove(path());
    EXPECT_TRUE(look(file).contains(u"cannot be read"_s));
    write(u"shop.toml"_s, "[auth]\nuser = 'a'\n");
    EXPECT_EQ(look(file), u"user a"_s);
}

TEST_F(FollowedRules, includeTheFilesOfTheirAnswers)
{
    write(u"answer.xml"_s, "one");
    write(u"shop.toml"_s, "[[answer]]\nfile = 'answer.xml'\n");
    RulesFile file(path());
    EXPECT_EQ(look(file), QString());
    write(u"answer.xml"_s, "two");
    QByteArray body;
    file.look([&](const Rules& rules) { body = rules.answers.at(0).body; },
              [](const QString& what) { ADD_FAILURE() << what.toStdString(); });
    EXPECT_EQ(body, QByteArray("two"));
    // an answer whose file comes after the rules
    write(u"shop.toml"_s, "[[answer]]\nfile = 'late.xml'\n");
    EXPECT_TRUE(look(file).contains(u"late.xml"_s));
    write(u"late.xml"_s, "three");
    EXPECT_EQ(look(file), u"user till"_s);
}

TEST_F(FollowedRules, mustBeRightAtTheBeginning)
{
    write(u"shop.toml"_s, "x = 1\n");
    EXPECT_THROW(RulesFile{path()}, ConfigError);
    EXPECT_THROW(RulesFile{folder.filePath(u"none.toml"_s)}, ConfigError);
}

} // namespace
} // namespace simulator::test

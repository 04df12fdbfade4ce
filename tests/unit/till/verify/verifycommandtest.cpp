// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/verifycommand.h"

#include "till/failure.h"
#include "till/screen/output.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using till::ExitCode;

namespace {

const QString cards = u"card = \"1\"\nsecondCard = \"2\"\n"_s;

class VerifyCommandTest : public ::testing::Test
{
protected:
    /// What the command refuses with; no plug-in is there, so that what is let through fails too,
    /// with another sentence and code.
    till::Failure refusal(const QString& config, const QString& address)
    {
        options.command = till::Command::Verify;
        options.configFile = folder.filePath(u"orva.toml"_s);
        options.configNamed = true;
        options.plugin = folder.filePath(u"none.so"_s);
        options.address = address;
        QFile file(options.configFile);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(config.toUtf8());
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        till::Output out(nullptr);
        till::Output errors(nullptr);
        try {
            till::VerifyCommand(options, out, errors).run();
        } catch (const till::Failure& failure) {
            return failure;
        }
        return till::Failure(u"none"_s, ExitCode::Ok);
    }

    QTemporaryDir folder;
    till::Options options;
};

} // namespace

TEST_F(VerifyCommandTest, anAddressThatIsNotMarkedIsNotTried)
{
    for (const QString& marks : {QString(), u"[verify]\n"_s + cards,
                                 u"[verify]\ntestServer = \"http://127.0.0.1:2/\"\n"_s + cards,
                                 u"[verify]\ntestServer = \"https://127.0.0.1:1/\"\n"_s + cards}) {
        const till::Failure failure = refusal(marks, u"http://127.0.0.1:1/"_s);
        EXPECT_EQ(failure.exitCode(), ExitCode::Usage) << qPrintable(marks);
        EXPECT_TRUE(failure.text().contains(u"testServer"_s)) << qPrintable(failure.text());
    }
}

TEST_F(VerifyCommandTest, aFileThatIsThereIsNoPlaceForResults)
{
    const QString marks = u"[verify]\ntestServer = \"http://127.0.0.1:1\"\n"_s + cards;
    options.junitFile = folder.filePath(u"orva.toml"_s);
    static_cast<void>(refusal(marks, u"http://127.0.0.1:1"_s)); // writes the file
    const till::Failure failure = refusal(marks, u"http://127.0.0.1:1"_s);
    EXPECT_EQ(failure.exitCode(), ExitCode::Usage);
    EXPECT_TRUE(failure.text().contains(u"name a new file"_s)) << qPrintable(failure.text());
}

TEST_F(VerifyCommandTest, aMarkedAddressIsTriedWithItsCardsOnly)
{
    const QString marks = u"[verify]\ntestServer = \"http://127.0.0.1:1\"\n"_s;
    EXPECT_TRUE(refusal(marks, u"http://127.0.0.1:1/"_s).text().contains(u"card"_s));
    EXPECT_TRUE(refusal(marks + u"card = \"1\"\nsecondCard = \"1\"\n"_s, u"http://127.0.0.1:1"_s)
                    .text()
                    .contains(u"[verify]"_s));
    // all is well but for the plug-in
    const till::Failure failure = refusal(marks + cards, u"http://127.0.0.1:1"_s);
    EXPECT_EQ(failure.exitCode(), ExitCode::Failed);
    EXPECT_TRUE(failure.text().contains(u"none.so"_s)) << qPrintable(failure.text());
}

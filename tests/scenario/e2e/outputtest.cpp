// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Output that cannot be written, and texts from outside in it, as the programs themselves have
// them.

#include "tests/support/shop.h"

using namespace Qt::StringLiterals;

namespace {

const QString tillOfOutput = QStringLiteral(ORVA_TILL);
const QString simulatorOfOutput = QStringLiteral(ORVA_SIMULATOR);

/// What may be wrong with a standard output; "$@" is the program.
const QString fullDisk = u"\"$@\" </dev/null >/dev/full"_s;
const QString closedStream = u"\"$@\" >&-"_s;
const QString goneReader = u"exec 3> >(:); wait $!; \"$@\" >&3"_s;

/// Runs a program in a shell's command. @return what came on the standard error
RunResult through(const QString& shellCommand, const QString& program, const QStringList& arguments,
                  const QString& folder)
{
    return runProgram(u"bash"_s, QStringList{u"-c"_s, shellCommand, u"bash"_s, program} + arguments,
                      folder);
}

class OutputTest : public Shop
{
protected:
    void SetUp() override
    {
        Shop::SetUp();
        writeFile(u"orva.toml"_s,
                  readFile(u"orva.toml"_s) + u"[recording]\nfolder = \"records\"\n"_s);
        ASSERT_EQ(till({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"30"_s}).exitCode, 0);
    }
    QList<QStringList> commands() const
    {
        return {{u"--help"_s},
                {u"--version"_s},
                {u"queue"_s, u"--help"_s},
                {u"check"_s, u"sale.toml"_s},
                {u"check"_s, u"sale.toml"_s, u"--json"_s},
                {u"sell"_s, u"sale.toml"_s},
                {u"sell"_s, u"sale.toml"_s, u"--json"_s},
                {u"return"_s, u"return.toml"_s},
                {u"work"_s},
                {u"checks"_s},
                {u"checks"_s, u"--json"_s},
                {u"ledger"_s},
                {u"ledger"_s, u"--csv"_s},
                {u"ledger"_s, u"--json"_s},
                {u"explain"_s, u"1"_s},
                {u"explain"_s, u"1"_s, u"--json"_s},
                {u"log"_s, u"list"_s},
                {u"log"_s, u"list"_s, u"--json"_s},
                {u"log"_s, u"show"_s, u"1"_s},
                {u"log"_s, u"export"_s, u"1"_s, u"case.jsonl"_s},
                {u"log"_s, u"replay"_s, u"1"_s},
                {u"doctor"_s},
                {u"doctor"_s, u"--json"_s},
                {u"queue"_s, u"list"_s, u"--all"_s},
                {u"queue"_s, u"list"_s, u"--all"_s, u"--json"_s},
                {u"queue"_s, u"show"_s, u"1"_s},
                {u"queue"_s, u"deliver"_s},
                {u"queue"_s, u"reauthorize"_s}};
    }
    QList<QStringList> serverCommands() const
    {
        const QStringList database{u"--database"_s, path(u"server.sqlite"_s)};
        return {{u"--help"_s},
                {u"rules"_s},
                database + QStringList{u"ledger"_s},
                database + QStringList{u"ledger"_s, u"--csv"_s},
                database + QStringList{u"ledger"_s, u"--json"_s},
                // nobody learns where it listens
                {u"--database"_s, path(u"other.sqlite"_s), u"--port"_s, u"0"_s}};
    }
    int closedChecks() const { return int(till({u"checks"_s}).output.count(u"closed"_s)); }
};

} // namespace

TEST_F(OutputTest, thatCannotBeWrittenIsToldByEveryCommand)
{
    for (const QStringList& command : commands()) {
        const RunResult result = through(fullDisk, tillOfOutput, command, folder());
        const bool printsNothing = command == QStringList{u"work"_s};
        EXPECT_EQ(result.exitCode, printsNothing ? 0 : 5) << qPrintable(command.join(u' '));
        EXPECT_EQ(result.output.contains(u"orva-till: What is shown is not whole: the standard "
                                         "output cannot be written (No space left on device)."_s),
                  !printsNothing)
            << qPrintable(command.join(u' ')) << ":\n"
            << qPrintable(result.output);
    }
    for (const QStringList& command : serverCommands()) {
        const RunResult result = through(fullDisk, simulatorOfOutput, command, folder());
        EXPECT_EQ(result.exitCode, 1) << qPrintable(command.join(u' '));
        EXPECT_TRUE(result.output.contains(u"orva-simulator: what is shown is not whole"_s))
            << qPrintable(command.join(u' ')) << ":\n"
            << qPrintable(result.output);
    }
}

TEST_F(OutputTest, thatIsClosedIsToldAndNoFileTakesItsPlace)
{
    for (const QStringList& command :
         {QStringList{u"sell"_s, u"sale.toml"_s}, {u"ledger"_s}, {u"log"_s, u"list"_s}}) {
        const RunResult result = through(closedStream, tillOfOutput, command, folder());
        EXPECT_EQ(result.exitCode, 5) << qPrintable(result.output);
        EXPECT_TRUE(result.output.contains(u"(Bad file descriptor)"_s))
            << qPrintable(result.output);
    }
    EXPECT_EQ(till({u"log"_s, u"replay"_s, u"all"_s}).exitCode, 0);
}

TEST_F(OutputTest, aClosedSaleStaysClosedAndIsTold)
{
    int closed = closedChecks();
    for (const QString& streams : {fullDisk, closedStream, goneReader}) {
        const RunResult sold =
            through(streams, tillOfOutput, {u"sell"_s, u"sale.toml"_s}, folder());
        EXPECT_EQ(sold.exitCode, 5) << qPrintable(streams);
        EXPECT_EQ(closedChecks(), ++closed) << qPrintable(sold.output);
        EXPECT_TRUE(sold.output.contains(u"The check is closed all the same: "_s))
            << qPrintable(streams) << ":\n"
            << qPrintable(sold.output);
    }
    till({u"queue"_s, u"deliver"_s});
    EXPECT_EQ(undelivered(), 0);
    EXPECT_EQ(tillBooks(), serverBooks());
}

TEST_F(OutputTest, thatNobodyReadsAnyMoreEndsQuietly)
{
    for (const QStringList& command :
         {QStringList{u"--help"_s}, {u"ledger"_s}, {u"log"_s, u"show"_s, u"1"_s}}) {
        const RunResult result = through(goneReader, tillOfOutput, command, folder());
        EXPECT_EQ(result.exitCode, 5) << qPrintable(command.join(u' '));
        EXPECT_EQ(result.output, QString()) << qPrintable(command.join(u' '));
    }
    for (const QStringList& command : serverCommands()) {
        const RunResult result = through(goneReader, simulatorOfOutput, command, folder());
        EXPECT_EQ(result.exitCode, 1) << qPrintable(command.join(u' '));
        EXPECT_EQ(result.output, QString()) << qPrintable(command.join(u' '));
    }
}

TEST_F(OutputTest, aCashierWhoIsToldNothingWorksNoFurther)
{
    writeFile(u"commands"_s, u"open sale.toml\nclose\nopen sale.toml\nclose\n"_s);
    const int closed = closedChecks();
    const RunResult worked =
        through(u"\"$@\" <commands >/dev/full"_s, tillOfOutput, {u"work"_s}, folder());
    EXPECT_EQ(worked.exitCode, 5);
    EXPECT_TRUE(worked.output.contains(u"\"orva-till checks\" lists what is closed."_s))
        << qPrintable(worked.output);
    EXPECT_EQ(closedChecks(), closed) << "the first answer was lost, so no check was closed";
}

TEST_F(OutputTest, anArgumentIsShownAndNotObeyed)
{
    const QString hostile = u"\033]0;title\a\033[2J\nerror: lost\u202e"_s;
    const QString shown = u"\\u001b]0;title\\u0007\\u001b[2J error: lost\\u202e"_s;
    const QList<QStringList> rows{{hostile},
                                  {u"--"_s + hostile},
                                  {u"sell"_s, hostile},
                                  {u"sell"_s, u"sale.toml"_s, u"--points"_s, hostile},
                                  {u"sell"_s, u"sale.toml"_s, u"--tender"_s, hostile},
                                  {u"queue"_s, hostile},
                                  {u"queue"_s, u"show"_s, hostile},
                                  {u"explain"_s, hostile},
                                  {u"log"_s, u"show"_s, hostile},
                                  {u"log"_s, u"export"_s, hostile, u"x"_s},
                                  {u"checks"_s, u"--config"_s, hostile},
                                  {u"checks"_s, u"--database"_s, u"absent/"_s + hostile},
                                  {u"check"_s, u"sale.toml"_s, u"--plugin"_s, hostile}};
    const auto expectShown = [&](const QString& program, const QStringList& row) {
        const RunResult result = runProgram(program, row, folder());
        EXPECT_NE(result.exitCode, 0) << qPrintable(row.join(u' '));
        EXPECT_FALSE(result.output.contains(u'\033')) << qPrintable(result.output);
        EXPECT_FALSE(result.output.contains(u'\u202e')) << qPrintable(result.output);
        EXPECT_FALSE(result.output.contains(u"\nerror: "_s)) << qPrintable(result.output);
        EXPECT_TRUE(result.output.contains(shown)) << qPrintable(result.output);
    };
    for (const QStringList& row : rows) {
        expectShown(tillOfOutput, row);
    }
    const QList<QStringList> serverRows{{hostile},
                                        {u"--config"_s, hostile},
                                        {u"--listen"_s, hostile},
                                        {u"ledger"_s, u"--database"_s, hostile}};
    for (const QStringList& row : serverRows) {
        expectShown(simulatorOfOutput, row);
    }
}

TEST_F(OutputTest, theLogSteersNothingEither)
{
    writeFile(u"orva.toml"_s, readFile(u"orva.toml"_s)
                                  .replace(u"user = \"till\""_s,
                                           u"user = \"till\\u001b[2J\\nerror: lost\\u202e\""_s));
    const RunResult checked = till({u"--verbose"_s, u"check"_s, u"sale.toml"_s});
    EXPECT_FALSE(checked.output.contains(u'\033')) << qPrintable(checked.output);
    EXPECT_FALSE(checked.output.contains(u"\nerror: "_s)) << qPrintable(checked.output);
    EXPECT_TRUE(checked.output.contains(u"till\\u001b[2J error: lost\\u202e\n"_s))
        << qPrintable(checked.output);
}

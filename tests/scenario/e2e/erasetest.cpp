// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Canaries: a card and a name are sown everywhere that a till keeps anything, the customer is
// erased, and every byte of the folder is looked at.

#include "tests/support/shop.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>

using namespace Qt::StringLiterals;

namespace {

const QString forgottenCard = u"2200777788889"_s;
const QString otherCard = u"2200000000024"_s;
const QString firstName = u"Евпраксия"_s;
const QString surname = u"Канарейкина"_s;

/// The text as it may stand in a file: UTF-8, the two orders of UTF-16, and JSON's codes.
QByteArrayList spellingsInBytes(const QString& text)
{
    QByteArray big;
    QByteArray little;
    QByteArray codes;
    for (const QChar character : text) {
        const char high = char(character.unicode() >> 8);
        const char low = char(character.unicode() & 0xff);
        big.append(high).append(low);
        little.append(low).append(high);
        codes += "\\u" + QByteArray::number(character.unicode(), 16).rightJustified(4, '0');
    }
    return {text.toUtf8(), big, little, codes, codes.toUpper().replace("\\U", "\\u")};
}

class EraseTest : public Shop
{
protected:
    void SetUp() override
    {
        Shop::SetUp();
        stopServer();
        const QString rules =
            runProgram(QStringLiteral(ORVA_SIMULATOR), {u"rules"_s}, folder()).output;
        serverRules = rules;
        // what is the server's own stands elsewhere
        ASSERT_TRUE(QDir().mkpath(path(u"server"_s)));
        serverRules.replace(u"2200000000017"_s, forgottenCard)
            .replace(u"Анна"_s, firstName)
            .replace(u"Соколова"_s, surname);
        writeFile(u"server/rules.toml"_s, serverRules);
        start();
        writeConfig();
        writeFile(u"orva.toml"_s,
                  readFile(u"orva.toml"_s) + u"[recording]\nfolder = \"records\"\n"_s);
        ASSERT_TRUE(QDir().mkpath(path(u"given"_s)));
        const QString sale = readFile(u"sale.toml"_s);
        writeFile(u"given/sale.toml"_s, QString(sale).replace(u"2200000000017"_s, forgottenCard));
        writeFile(u"given/other.toml"_s, QString(sale).replace(u"2200000000017"_s, otherCard));
        QFile::remove(path(u"sale.toml"_s));
    }

    void start()
    {
        const QStringList arguments{
            u"--database"_s, path(u"server/server.sqlite"_s),
            u"--port"_s,     address.isEmpty() ? u"0"_s : QString::number(QUrl(address).port()),
            u"--config"_s,   path(u"server/rules.toml"_s)};
        server = std::make_unique<Program>(QStringLiteral(ORVA_SIMULATOR), arguments, folder());
        address = server->waitForLine(u"Listening on "_s);
        ASSERT_FALSE(address.isEmpty());
    }

    void sell(const QString& file)
    {
        done({u"sell"_s, u"given/"_s + file, u"--points"_s, u"10"_s, u"--wait"_s, u"30"_s});
    }

    /// Everything that keeps a customer: checks, queue, records, exports, archives, logs.
    void sow()
    {
        sell(u"sale.toml"_s);
        sell(u"other.toml"_s);
        sell(u"sale.toml"_s);
        writeFile(u"log4qt.properties"_s, u"log4j.logger.orva=DEBUG, file\n"
                                          "log4j.appender.file=org.apache.log4j.FileAppender\n"
                                          "log4j.appender.file.file=till.log\n"
                                          "log4j.appender.file.appendFile=true\n"_s);
        const QString log = u"first line, nobody's\n"
                            "card 2200777788889\n"
                            "grouped 2200 7777 8888 9, 2200-7777-8888-9 and 2200.7777.8888.9\n"
                            "track two ;2200777788889=25121010000012300000?\n"
                            "track one %B2200777788889^КАНАРЕЙКИНА/ЕВПРАКСИЯ^25121010000?\n"
                            "padded 0002200777788889\n"
                            "Евпраксия Канарейкина, канарейкина евпраксия\n"
                            "somebody else's 2200000000024, 12200777788889, 22007777888890\n"_s;
        writeFile(u"till.log"_s, log);
        writeFile(u"till.log.1"_s, log);
        done({u"log"_s, u"export"_s, u"all"_s, u"exported.jsonl"_s});
        done({u"log"_s, u"export"_s, u"1"_s, u"--html"_s, u"page.html"_s, u"--with-cards"_s});
        done({u"support"_s, u"masked.tar"_s, u"--records"_s, u"all"_s});
        done({u"support"_s, u"whole.tar"_s, u"--records"_s, u"all"_s, u"--with-cards"_s});
    }

    /// Every file of the till, those of the server and the cashier's own left out.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> content;
        QDirIterator it(folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString name = QDir(folder()).relativeFilePath(it.next());
            QFile file(path(name));
            if (!name.startsWith(u"server/"_s) && !name.startsWith(u"given/"_s)) {
                EXPECT_TRUE(file.open(QFile::ReadOnly)) << qPrintable(name);
                content.insert(name, file.readAll());
            }
        }
        return content;
    }

    /// Where the canaries are found, "file: canary".
    QStringList found() const
    {
        QStringList places;
        const QMap<QString, QByteArray> all = files();
        for (auto it = all.cbegin(); it != all.cend(); ++it) {
            for (const QString& canary :
                 {forgottenCard, u"2200 7777 8888 9"_s, u"2200-7777-8888-9"_s,
                  u"2200.7777.8888.9"_s, firstName, surname, firstName.toUpper(), surname.toUpper(),
                  firstName.toLower(), surname.toLower()}) {
                const QByteArrayList spellings = spellingsInBytes(canary);
                for (const QByteArray& spelling : spellings) {
                    const bool holdsLog =
                        it.key().startsWith(u"till.log"_s) || it.key() == u"whole.tar"_s;
                    const bool isOther = holdsLog && canary == forgottenCard;
                    QByteArray bytes = *it;
                    if (isOther) { // longer numbers, of others
                        bytes.replace("12200777788889", "").replace("22007777888890", "");
                    }
                    if (bytes.contains(spelling)) {
                        places.append(it.key() + u": "_s + canary);
                    }
                }
            }
        }
        places.removeDuplicates();
        return places;
    }

    QString serverRules;
};

} // namespace

TEST_F(EraseTest, leavesNoByteOfTheCustomer)
{
    sow();
    const QStringList before = found();
    for (const QString& file : {u"till.sqlite"_s, u"records/000001.jsonl"_s, u"exported.jsonl"_s,
                                u"whole.tar"_s, u"page.html"_s, u"till.log"_s, u"till.log.1"_s}) {
        EXPECT_TRUE(before.contains(file + u": "_s + forgottenCard))
            << qPrintable(file) << " is not sown";
    }
    const QString books = tillBooks();
    const QString report = done({u"erase"_s, u"2200 7777 8888 9"_s});
    EXPECT_EQ(found(), QStringList()) << qPrintable(report);
    EXPECT_EQ(report, u"Card ****8889 is taken out of:\n"
                      "  checks: 2\n"
                      "  messages of the queue: 2\n"
                      "  records: 4\n"
                      "  support archives: 1\n"
                      "  pages of cases: 1\n"
                      "  logs: 2\n"_s);
    EXPECT_EQ(tillBooks(), books) << "the books have changed";
}

TEST_F(EraseTest, leavesEverybodyElseAsTheyWere)
{
    sow();
    const QMap<QString, QByteArray> before = files();
    const QString explained = done({u"explain"_s, u"2"_s});
    done({u"erase"_s, forgottenCard});
    const QMap<QString, QByteArray> after = files();
    ASSERT_EQ(before.keys(), after.keys());
    EXPECT_EQ(after.value(u"records/000002.jsonl"_s), before.value(u"records/000002.jsonl"_s));
    ASSERT_FALSE(before.value(u"records/000002.jsonl"_s).isEmpty());
    EXPECT_TRUE(after.value(u"exported.jsonl"_s).contains(before.value(u"records/000002.jsonl"_s)));
    EXPECT_EQ(after.value(u"masked.tar"_s), before.value(u"masked.tar"_s));
    EXPECT_TRUE(after.value(u"till.log"_s).startsWith("first line, nobody's\n"));
    EXPECT_TRUE(after.value(u"till.log"_s)
                    .endsWith("somebody else's 2200000000024, 12200777788889, 22007777888890\n"));
    EXPECT_EQ(after.value(u"till.log"_s).size(), before.value(u"till.log"_s).size());
    EXPECT_EQ(done({u"explain"_s, u"2"_s}), explained);
    const QString message = done({u"queue"_s, u"show"_s, u"2"_s});
    EXPECT_TRUE(message.contains(u"****0024"_s)) << qPrintable(message);
}

TEST_F(EraseTest, leavesChecksAndRecordsOfUse)
{
    sow();
    done({u"erase"_s, forgottenCard});
    done({u"explain"_s, u"1"_s});
    done({u"explain"_s, u"3"_s});
    EXPECT_EQ(done({u"log"_s, u"replay"_s, u"all"_s}).count(u"identical"_s), 3);
    EXPECT_EQ(done({u"log"_s, u"replay"_s, u"exported.jsonl"_s}).count(u"identical"_s), 3);
    EXPECT_EQ(done({u"log"_s, u"replay"_s, u"whole.tar"_s}).count(u"identical"_s), 3);
    EXPECT_EQ(done({u"doctor"_s}).contains(u"fails"_s), false);
    const QString again = done({u"erase"_s, forgottenCard});
    EXPECT_TRUE(again.contains(u"  checks: 0\n"_s)) << qPrintable(again);
    // of a sale without its customer, goods are returned without the loyalty system
    const QString back = done({u"return"_s, u"return.toml"_s});
    EXPECT_TRUE(back.contains(u"note: The customer of the sale was erased"_s)) << qPrintable(back);
    EXPECT_EQ(undelivered(), 0);
}

TEST_F(EraseTest, deliversFirstAndLeavesWhatCannotBe)
{
    sell(u"sale.toml"_s);
    closeWithoutServer(u"given/sale.toml"_s);
    ASSERT_EQ(undelivered(), 1);
    const RunResult refused = till({u"erase"_s, forgottenCard});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.output.contains(u"Left: Message 2 is not delivered"_s))
        << qPrintable(refused.output);
    EXPECT_TRUE(refused.output.contains(u"  checks: 1\n"_s)) << qPrintable(refused.output);
    EXPECT_EQ(undelivered(), 1);

    start();
    const QString report = done({u"erase"_s, forgottenCard});
    EXPECT_TRUE(report.contains(u"Delivered before: 1\n"_s)) << qPrintable(report);
    EXPECT_TRUE(report.contains(u"  checks: 1\n"_s)) << qPrintable(report);
    EXPECT_EQ(undelivered(), 0);
    EXPECT_EQ(found(), QStringList());
    const RunResult books = runProgram(
        QStringLiteral(ORVA_SIMULATOR),
        {u"ledger"_s, u"--csv"_s, u"--database"_s, path(u"server/server.sqlite"_s)}, folder());
    EXPECT_EQ(books.output.count(u"****8889"_s), 2) << qPrintable(books.output);
}

TEST_F(EraseTest, leavesASuspendedCheckAndSaysSo)
{
    std::unique_ptr<Program> till = startTill();
    till->command(u"open given/sale.toml"_s);
    till->command(u"request"_s);
    till->command(u"suspend"_s);
    till->send(u"quit"_s);
    EXPECT_EQ(till->waitForEnd(), 0);
    const RunResult refused = this->till({u"erase"_s, forgottenCard, u"--json"_s});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.output.contains(u"is suspended; close or abandon it"_s))
        << qPrintable(refused.output);
    std::unique_ptr<Program> later = startTill();
    EXPECT_TRUE(later->command(u"restore last"_s).endsWith(u"ok\n"_s))
        << qPrintable(later->output());
    later->command(u"close"_s);
    later->command(u"wait 30"_s);
    later->send(u"quit"_s);
    EXPECT_EQ(later->waitForEnd(), 0);
    done({u"erase"_s, forgottenCard});
    EXPECT_EQ(found(), QStringList());
}

TEST_F(EraseTest, looksWhereItIsToldAndTellsOfStrangeFiles)
{
    sow();
    ASSERT_TRUE(QDir().mkpath(path(u"archive"_s)));
    ASSERT_TRUE(QFile::rename(path(u"exported.jsonl"_s), path(u"archive/old-case"_s)));
    writeFile(u"letter.txt"_s, u"Card 2200777788889 complains\n"_s);
    const RunResult report = till({u"erase"_s, forgottenCard, u"--in"_s, u"archive"_s});
    EXPECT_EQ(report.exitCode, 1);
    EXPECT_TRUE(report.output.contains(u"letter.txt holds the card"_s))
        << qPrintable(report.output);
    EXPECT_EQ(readFile(u"letter.txt"_s), u"Card 2200777788889 complains\n"_s);
    QFile::remove(path(u"letter.txt"_s));
    EXPECT_EQ(found(), QStringList());
}

TEST_F(EraseTest, refusesNumbersThatCannotBeLookedFor)
{
    for (const QString& number : {u"17"_s, u"****0017"_s, u"-"_s, u" "_s}) {
        EXPECT_EQ(till({u"erase"_s, u"--"_s, number}).exitCode, 2) << qPrintable(number);
    }
}

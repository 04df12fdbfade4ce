// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Canaries: a password, a key and a card that appear nowhere else are driven through everything
// that a till and a server do, with every log switched on, and then looked for.

#include "tests/support/shop.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

const QString password = QStringLiteral("Canary-Pa55word");
const QString key = QStringLiteral("canary-key-4711");
/// What somebody has put before the "@" of the server's address.
const QString addressUser = QStringLiteral("canaryuser");
const QString addressPassword = QStringLiteral("canary-in-address");
const QString card = QStringLiteral("2200777788889");

QString hashOf(const QString& secret)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(secret.toUtf8(), QCryptographicHash::Sha1).toHex());
}

QString authorizationFor(const QString& secret)
{
    return QString::fromLatin1(u"till:%1:%2"_s.arg(hashOf(secret), key).toUtf8().toBase64());
}

/// Whatever gives the password or the key away.
QStringList secrets()
{
    const QString old = password + u"-old"_s;
    return {password,
            old,
            key,
            hashOf(password),
            hashOf(old),
            authorizationFor(password),
            authorizationFor(old)};
}

class SecretTest : public Shop
{
protected:
    void SetUp() override
    {
        qputenv("QT_LOGGING_RULES", "*=true");
        Shop::SetUp();
        stopServer();
        seen += server->output();
        const QString rules =
            runProgram(QStringLiteral(ORVA_SIMULATOR), {u"rules"_s}, folder()).output;
        ASSERT_TRUE(rules.contains(u"2200000000017"_s));
        writeRules(rules, password + u"-old"_s);
        startServer(path(u"rules.toml"_s));
        writeCanaryConfig(password + u"-old"_s);
        writeFile(u"sale.toml"_s, readFile(u"sale.toml"_s).replace(u"2200000000017"_s, card));
        writeFile(u"unknown.toml"_s, readFile(u"sale.toml"_s).replace(card, u"1100777788889"_s));
    }

    void TearDown() override { qunsetenv("QT_LOGGING_RULES"); }

    void writeRules(QString rules, const QString& secret)
    {
        writeFile(u"rules.toml"_s, rules.replace(u"\"secret\""_s, u'"' + secret + u'"')
                                       .replace(u"\"demo\""_s, u'"' + key + u'"')
                                       .replace(u"2200000000017"_s, card));
    }

    void writeCanaryConfig(const QString& secret)
    {
        writeConfig(secret);
        writeFile(u"orva.toml"_s,
                  readFile(u"orva.toml"_s).replace(u"\"demo\""_s, u'"' + key + u'"'));
    }

    /// A configuration that nothing may come of, whatever is asked for.
    void tryAddressWithSecrets(const QString& start)
    {
        const QString withSecrets = start + addressUser + u':' + addressPassword + u'@';
        writeFile(u"leaking.toml"_s, readFile(u"orva.toml"_s).replace(u"http://"_s, withSecrets) +
                                         u"[recording]\nfolder = \"records\"\n"_s);
        for (const QStringList& command : {QStringList{u"check"_s, u"sale.toml"_s},
                                           {u"sell"_s, u"sale.toml"_s},
                                           {u"work"_s},
                                           {u"log"_s, u"list"_s},
                                           {u"queue"_s, u"list"_s},
                                           {u"checks"_s},
                                           {u"doctor"_s}}) {
            const RunResult result =
                till(QStringList{u"--verbose"_s, u"--config"_s, u"leaking.toml"_s} + command);
            EXPECT_EQ(result.exitCode, command.first() == u"doctor"_s ? 1 : 2)
                << qPrintable(result.output);
            EXPECT_TRUE(result.output.contains(u"Orva.serverUrl: "_s) ||
                        result.output.contains(u"fails    Key Orva.serverUrl "_s))
                << qPrintable(result.output);
            seen += result.output;
        }
        EXPECT_FALSE(QFile::exists(path(u"records"_s))) << "the plug-in was asked something";
    }

    /// Runs a till's command with everything that it can log.
    void run(const QStringList& arguments)
    {
        const RunResult result = till(QStringList{u"--verbose"_s} + arguments);
        EXPECT_NE(result.exitCode, -1) << qPrintable(arguments.join(u' '));
        seen += result.output;
    }

    void work(const QStringList& commands)
    {
        Program till(QStringLiteral(ORVA_TILL), {u"--verbose"_s, u"work"_s}, folder());
        for (const QString& command : commands) {
            till.command(command);
        }
        till.send(u"quit"_s);
        EXPECT_EQ(till.waitForEnd(), 0) << qPrintable(till.output());
        seen += till.output();
    }

    void lookEverywhere()
    {
        run({u"checks"_s});
        run({u"ledger"_s});
        run({u"ledger"_s, u"--csv"_s});
        run({u"ledger"_s, u"--json"_s});
        run({u"queue"_s, u"list"_s, u"--all"_s});
        run({u"queue"_s, u"list"_s, u"--all"_s, u"--json"_s});
        for (int message = 1; message <= 4; ++message) {
            run({u"queue"_s, u"show"_s, QString::number(message)});
            run({u"queue"_s, u"show"_s, QString::number(message), u"--json"_s});
        }
        for (const QString& form : {QString(), u"--csv"_s, u"--json"_s}) {
            QStringList arguments{u"--database"_s, path(u"server.sqlite"_s), u"--config"_s,
                                  path(u"rules.toml"_s), u"ledger"_s};
            seen += runProgram(QStringLiteral(ORVA_SIMULATOR),
                               form.isEmpty() ? arguments : arguments << form, folder())
                        .output;
        }
    }

    /// What stands in every file but those that hold the secrets by their purpose.
    QByteArray otherFiles() const
    {
        QByteArray content;
        const QStringList names = QDir(folder()).entryList(QDir::Files | QDir::Hidden);
        for (const QString& name : names) {
            QFile file(path(name));
            if (!name.endsWith(u".toml"_s) && file.open(QFile::ReadOnly)) {
                content += file.readAll();
            }
        }
        return content;
    }

    QString seen; ///< everything that was printed, logs included
};

} // namespace

TEST_F(SecretTest, NothingPrintedOrLoggedGivesACanaryAway)
{
    work({u"open sale.toml"_s,
          u"points 20"_s,
          u"show"_s,
          u"close"_s,
          u"return return.toml"_s,
          u"request"_s,
          u"close"_s,
          u"open sale.toml"_s,
          u"request"_s,
          u"suspend"_s,
          u"restore last"_s,
          u"points all"_s,
          u"close"_s,
          u"open sale.toml"_s,
          u"abandon"_s,
          u"open unknown.toml"_s,
          u"show"_s,
          u"abandon"_s,
          u"queue"_s,
          u"wait 60"_s});
    run({u"check"_s, u"sale.toml"_s});
    for (const QString& start : {u"http://"_s, u"http:/"_s, u"http://1/"_s, QString()}) {
        tryAddressWithSecrets(start);
    }
    stopServer();
    seen += server->output();
    run({u"check"_s, u"sale.toml"_s}); // no connection

    startServer(path(u"rules.toml"_s));
    {
        Program till(QStringLiteral(ORVA_TILL), {u"--verbose"_s, u"work"_s}, folder());
        till.command(u"open sale.toml"_s);
        till.command(u"points all"_s);
        stopServer();
        till.command(u"close"_s);
        till.kill();
        seen += till.output();
    }
    seen += server->output();
    writeRules(readFile(u"rules.toml"_s).replace(password + u"-old"_s, u"secret"_s), password);
    startServer(path(u"rules.toml"_s));
    run({u"queue"_s, u"retry"_s, u"4"_s}); // the till may have found the server gone, and wait
    run({u"queue"_s, u"deliver"_s});       // refused: 401
    run({u"sell"_s, u"sale.toml"_s});
    run({u"queue"_s, u"list"_s});
    run({u"queue"_s, u"show"_s, u"4"_s});
    writeCanaryConfig(password);
    run({u"queue"_s, u"reauthorize"_s});
    run({u"queue"_s, u"deliver"_s});
    lookEverywhere();
    stopServer();
    seen += server->output();

    qunsetenv("QT_LOGGING_RULES");
    EXPECT_EQ(undelivered(), 0);
    EXPECT_TRUE(seen.contains(u"****"_s + card.right(4))) << qPrintable(seen);
    EXPECT_TRUE(seen.contains(u"orva"_s) && seen.contains(u"Адрес сервера"_s))
        << "the logs are not switched on:\n"
        << qPrintable(seen);
    EXPECT_TRUE(otherFiles().contains(card.toUtf8())) << "the databases are not looked at";
    for (const QString& secret : secrets()) {
        EXPECT_FALSE(seen.contains(secret)) << qPrintable(secret) << " in\n" << qPrintable(seen);
        EXPECT_FALSE(otherFiles().contains(secret.toUtf8())) << qPrintable(secret);
    }
    for (const QString& hidden : {addressUser, addressPassword}) {
        EXPECT_FALSE(seen.contains(hidden)) << qPrintable(hidden) << " in\n" << qPrintable(seen);
    }
    for (const QString& number : {card, u"1100777788889"_s}) {
        EXPECT_FALSE(seen.contains(number)) << qPrintable(seen);
    }
}

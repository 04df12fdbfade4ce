// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/shop.h"

#include "tests/support/tillsettings.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const QString tillProgram = QStringLiteral(ORVA_TILL);
const QString simulatorProgram = QStringLiteral(ORVA_SIMULATOR);
const QString examples = QStringLiteral(ORVA_EXAMPLES);
const QString strictRules = QStringLiteral("strict.toml");

} // namespace

void Shop::SetUp()
{
    ASSERT_TRUE(scene.isValid());
    for (const QString& name : {u"sale.toml"_s, u"return.toml"_s}) {
        ASSERT_TRUE(QFile::copy(examples + u'/' + name, path(name)));
    }
    // strict: a till that sends what does not fit the schemas fails its test
    writeFile(strictRules,
              u"strict = true\n"_s + runProgram(simulatorProgram, {u"rules"_s}, folder()).output);
    startServer();
    writeConfig();
}

void Shop::startServer(const QString& rules)
{
    address = startServerWith(rules.isEmpty() ? path(strictRules) : rules,
                              address.isEmpty() ? 0 : QUrl(address).port());
    ASSERT_FALSE(address.isEmpty());
}

void Shop::stopServer()
{
    server->terminate();
}

void ShopFolder::writeFile(const QString& name, const QString& text) const
{
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << qPrintable(name);
    file.write(text.toUtf8());
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

QString ShopFolder::readFile(const QString& name) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return QString::fromUtf8(file.readAll());
}

void Shop::writeConfig(const QString& password, const QString& serverAddress) const
{
    tests::TillSettings settings;
    settings.server = serverAddress.isEmpty() ? address : serverAddress;
    settings.password = password;
    settings.timeoutSeconds = 5;
    settings.plugin = QStringLiteral(ORVA_PLUGIN);
    writeFile(u"orva.toml"_s, settings.toml());
}

std::unique_ptr<Program> ShopFolder::startTill() const
{
    return std::make_unique<Program>(tillProgram, tillArguments() << u"work"_s, folder());
}

RunResult ShopFolder::till(const QStringList& arguments) const
{
    return runProgram(tillProgram, tillArguments() + arguments, folder());
}

QString ShopFolder::done(const QStringList& arguments) const
{
    const RunResult run = till(arguments);
    EXPECT_EQ(run.exitCode, 0) << qPrintable(arguments.join(u' ')) << "\n"
                               << qPrintable(run.output);
    return run.output;
}

QJsonArray ShopFolder::list(const QStringList& arguments) const
{
    const QString output = done(arguments + QStringList{u"--json"_s});
    const QJsonDocument document = QJsonDocument::fromJson(output.toUtf8());
    EXPECT_TRUE(document.isArray()) << qPrintable(output);
    return document.array();
}

QString ShopFolder::startServerWith(const QString& rules, int port)
{
    const QStringList arguments{u"--database"_s, path(u"server.sqlite"_s),
                                u"--port"_s,     QString::number(port),
                                u"--config"_s,   rules};
    server = std::make_unique<Program>(simulatorProgram, arguments, folder());
    return server->waitForLine(u"Listening on "_s);
}

QString ShopFolder::tillBooks() const
{
    return done({u"ledger"_s, u"--csv"_s});
}

QString ShopFolder::serverBooks() const
{
    const RunResult run =
        runProgram(simulatorProgram,
                   {u"ledger"_s, u"--csv"_s, u"--database"_s, path(u"server.sqlite"_s)}, folder());
    EXPECT_EQ(run.exitCode, 0) << qPrintable(run.output);
    return run.output;
}

void Shop::closeWithoutServer(const QString& checkFile)
{
    const auto working = startTill();
    for (const QString& command : {u"open "_s + checkFile, u"request"_s, u"close"_s}) {
        if (command == "close"_L1) {
            stopServer();
        }
        const QString answer = working->command(command);
        EXPECT_TRUE(answer.endsWith(u"ok\n"_s))
            << qPrintable(command) << ": " << qPrintable(answer);
    }
    working->kill();
}

QString Shop::balance() const
{
    const RunResult ledger =
        runProgram(simulatorProgram,
                   {u"ledger"_s, u"--json"_s, u"--database"_s, path(u"server.sqlite"_s)}, folder());
    const QJsonArray cards =
        QJsonDocument::fromJson(ledger.output.toUtf8()).object().value(u"cards"_s).toArray();
    for (const auto& card : cards) {
        if (card.toObject().value(u"number"_s).toString() == u"****0017"_s) {
            return card.toObject().value(u"balance"_s).toString();
        }
    }
    ADD_FAILURE() << "no such card in:\n" << qPrintable(ledger.output);
    return {};
}

int Shop::undelivered() const
{
    return static_cast<int>(list({u"queue"_s, u"list"_s}).size());
}

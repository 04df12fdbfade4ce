// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/doctor/scene.h"

#include "host/config/keysheet.h"
#include "tests/unit/till/doctor/disk.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QProcess>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

/// Of the calling thread and those that it starts.
void giveUpPrivileges()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    EXPECT_EQ(::syscall(SYS_capset, &header, none), 0);
}

simulator::Rules ownRules()
{
    simulator::Rules rules = tests::LoyaltyServer::usualRules();
    rules.user = Scene::user();
    rules.password = Scene::password();
    rules.apiKey = Scene::apiKey();
    return rules;
}

} // namespace

Scene::Scene(Way given) : way(given), rules(ownRules()), server(elsewhere.file(u"server.sqlite"_s))
{
    server.start(rules);
    if (way == Way::Https) {
        authority = std::make_unique<Authority>(elsewhere.file(QString()), u"authority"_s);
        const Authority::Certificate made = authority->certify(u"shop.orva.test"_s, 90);
        listen({made.file, made.keyFile});
    } else {
        listen({});
    }
    keys = {{u"Orva.merchantId"_s, u"\"1042\""_s},
            {u"Orva.pos"_s, u"\"3\""_s},
            {u"Orva.timeout"_s, u"10"_s},
            {u"Orva.user"_s, quoted(user())},
            {u"Orva.password"_s, quoted(password())},
            {u"Orva.apikey"_s, quoted(apiKey())},
            {u"http.maxAnswerBytes"_s, u"1000000"_s},
            {u"till.name"_s, u"\"3\""_s},
            {u"till.database"_s, quoted(databaseFile)},
            {u"till.plugin"_s, quoted(QStringLiteral(ORVA_PLUGIN_FILE))},
            {u"queue.keepDeliveredDays"_s, u"30"_s}};
    if (way == Way::Https) {
        set(u"http.caFile"_s, quoted(authority->file()));
    }
    setAddress(address());
    inDatabase([](poshost::Database&) {});
    subject.configFile = configFile;
    subject.card = rules.cards.front().number;
    setService(true);
    soundKeys = keys;
    QFile database(databaseFile);
    EXPECT_TRUE(database.open(QIODevice::ReadOnly));
    soundDatabase = database.readAll();
}

void Scene::putRight()
{
    keys = soundKeys;
    writtenByHand = false;
    subject = {};
    subject.configFile = configFile;
    subject.card = rules.cards.front().number;
    strikeNothing();
    if (authority) {
        const Authority::Certificate made = authority->certify(u"shop.orva.test"_s, 90);
        listen({made.file, made.keyFile});
    } else {
        listen({});
    }
    for (const QString& end : {u""_s, u"-wal"_s, u"-shm"_s}) {
        QFile::remove(databaseFile + end);
    }
    folder.write(u"till.sqlite"_s, soundDatabase);
    disk::setFree(0);
    qunsetenv("QT_LOGGING_RULES");
    QLoggingCategory::setFilterRules(QString());
}

void Scene::setService(bool runs)
{
    deliveryService = runs ? std::make_unique<poshost::QueueBell>(databaseFile) : nullptr;
}

QString Scene::runTill(const QStringList& words, const QByteArray& input) const
{
    write();
    QProcess till;
    till.setProcessChannelMode(QProcess::MergedChannels);
    till.start(QStringLiteral(ORVA_TILL), QStringList{u"--config"_s, configFile} + words);
    till.write(input);
    till.closeWriteChannel();
    EXPECT_TRUE(till.waitForFinished());
    return QString::fromUtf8(till.readAll());
}

void Scene::set(const QString& key, const QString& toml)
{
    keys.insert(key, toml);
}

QString Scene::address(const QString& rest) const
{
    return way == Way::Https ? u"https://shop.orva.test:%1%2"_s.arg(port).arg(rest)
                             : u"http://127.0.0.1:%1%2"_s.arg(port).arg(rest);
}

void Scene::setAddress(const QString& value)
{
    set(u"Orva.serverUrl"_s, quoted(value));
}

void Scene::listen(const simulator::HttpServer::Certificate& certificate)
{
    server.listen(port, certificate);
    port = server.port();
}

void Scene::strike(const simulator::Fault& fault, const QString& endpoint)
{
    simulator::FaultRule rule;
    rule.fault = fault;
    rule.endpoint = endpoint;
    server.strike({rule});
}

void Scene::showCertificate(const Authority::Certificate& certificate)
{
    listen({certificate.file, certificate.keyFile});
}

void Scene::inDatabase(const std::function<void(poshost::Database&)>& work) const
{
    poshost::Database database(databaseFile);
    work(database);
}

void Scene::giveKeySheet() const
{
    EXPECT_TRUE(QFile::copy(poshost::keysheet::fileOf(QStringLiteral(ORVA_PLUGIN_FILE)),
                            folder.file(u"liborva.keys.toml"_s)));
}

QString Scene::books() const
{
    return simulator::ledgerCsv(server.books());
}

void Scene::write() const
{
    if (writtenByHand) {
        return;
    }
    QString text;
    QString table;
    for (auto it = keys.cbegin(); it != keys.cend(); ++it) {
        if (it.key().section(u'.', 0, 0) != table) {
            table = it.key().section(u'.', 0, 0);
            text += u"[%1]\n"_s.arg(table);
        }
        if (!it->isEmpty()) {
            text += u"%1 = %2\n"_s.arg(it.key().section(u'.', 1), *it);
        }
    }
    folder.write(QFileInfo(configFile).fileName(), text.toUtf8());
}

till::doctor::Report Scene::examine()
{
    write();
    till::doctor::Doctor doctor(subject);
    till::doctor::Report report;
    if (isOrdinaryUser) {
        // what a thread has given up it does not get back
        std::thread([&] {
            giveUpPrivileges();
            report = doctor.examine();
        }).join();
    } else {
        report = doctor.examine();
    }
    EXPECT_FALSE(doctor.leftSomethingBehind());
    return report;
}

QMap<QString, QString> Scene::marksOf(const till::doctor::Report& report)
{
    const auto checks =
        QJsonDocument::fromJson(report.json().toUtf8()).object().value(u"checks"_s).toArray();
    QMap<QString, QString> marks;
    for (const auto& check : checks) {
        marks.insert(check.toObject().value(u"id"_s).toString(),
                     check.toObject().value(u"mark"_s).toString());
    }
    return marks;
}

} // namespace tests

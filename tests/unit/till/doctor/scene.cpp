// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/doctor/scene.h"

#include "host/config/keysheet.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace tests {

Scene::Scene(Way given) : way(given), server(elsewhere.file(u"server.sqlite"_s))
{
    const simulator::Rules rules = LoyaltyServer::usualRules();
    server.start(rules);
    if (way == Way::Https) {
        authority = std::make_unique<Authority>(elsewhere.file(QString()), u"authority"_s);
        const Authority::Certificate made = authority->certify(u"shop.orva.test"_s, 90);
        server.listen(0, {made.file, made.keyFile});
    } else {
        server.listen();
    }
    port = server.port();
    keys = {{u"Orva.merchantId"_s, u"\"1042\""_s},
            {u"Orva.pos"_s, u"\"3\""_s},
            {u"Orva.timeout"_s, u"10"_s},
            {u"Orva.user"_s, u"\"till\""_s},
            {u"Orva.password"_s, u"\"secret\""_s},
            {u"Orva.apikey"_s, u"\"demo\""_s},
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

void Scene::strike(const simulator::Fault& fault, const QString& endpoint)
{
    simulator::FaultRule rule;
    rule.fault = fault;
    rule.endpoint = endpoint;
    server.strike({rule});
}

void Scene::showCertificate(const Authority::Certificate& certificate)
{
    server.listen(port, {certificate.file, certificate.keyFile});
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
    folder.write(u"orva.toml"_s, text.toUtf8());
}

till::doctor::Report Scene::examine()
{
    write();
    till::doctor::Doctor doctor(subject);
    till::doctor::Report report = doctor.examine();
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

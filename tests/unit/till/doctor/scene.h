// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "host/queue/queuebell.h"
#include "tests/support/authority.h"
#include "tests/support/loyaltyserver.h"
#include "tests/support/testfolder.h"
#include "till/doctor/doctor.h"

#include <QMap>

#include <functional>
#include <memory>

namespace tests {

/// The till's folder, whose name needs care wherever it is written.
class ShopFolder
{
public:
    ShopFolder() { EXPECT_TRUE(QDir().mkpath(file(QString()))); }

    QString file(const QString& name) const
    {
        return outer.file(QStringLiteral("Shop \"3\" of Anna's $HOME; касса/") + name);
    }
    QString write(const QString& name, const QByteArray& content) const
    {
        return outer.write(QDir(outer.file(QString())).relativeFilePath(file(name)), content);
    }

private:
    TestFolder outer;
};

/// A till's set-up in which everything is right, to be broken by a test: a loyalty server, a
/// configuration, a database with an empty queue and the built plug-in.
class Scene
{
public:
    enum class Way
    {
        Http,
        Https, ///< under the name shop.orva.test, with a certificate for that
    };

    /// What the server knows the till by. Without quotes two of them are numbers, the third is no
    /// TOML.
    static QString user() { return QStringLiteral("17"); }
    static QString password() { return QStringLiteral("4711"); }
    static QString apiKey() { return QStringLiteral("12a"); }

    explicit Scene(Way way = Way::Http);

    /// Sets a key, "Table.key", to a value as TOML writes it; an empty value removes it.
    void set(const QString& key, const QString& toml);
    /// The server's address, with another path or what else follows the port.
    QString address(const QString& rest = QStringLiteral("/")) const;
    void setAddress(const QString& value);
    /// A quoted text.
    static QString quoted(QString text)
    {
        return u'"' +
               text.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\"")) +
               u'"';
    }

    /// Lets a fault strike every request, or those to an endpoint.
    void strike(const simulator::Fault& fault, const QString& endpoint = QString());
    void strikeNothing() { server.strike({}); }
    /// Lets the server show another certificate from now on.
    void showCertificate(const Authority::Certificate& certificate);
    void stopServer() { server.stopListening(); }
    /// Puts the real plug-in's key sheet beside a "liborva.so" in the till's folder.
    void giveKeySheet() const;
    /// The opened database, closed again afterwards.
    void inDatabase(const std::function<void(poshost::Database&)>& work) const;

    /// What somebody does who knows the right values and the copies, and can call the network and
    /// the server: settings, card, database, address, certificate and server are as they were.
    void putRight();
    /// Lets nobody, or somebody again, deliver without a till.
    void setService(bool runs);
    /// What the till prints, to a command with the scene's settings.
    QString runTill(const QStringList& words, const QByteArray& input = {}) const;

    /// All that the server's books hold.
    QString books() const;

    /// Writes the configuration unless it was written by hand.
    void write() const;
    /// What the doctor says about all this.
    till::doctor::Report examine();
    /// identifier -> mark ("ok", "warning", "fails", "skipped").
    static QMap<QString, QString> marksOf(const till::doctor::Report& report);

    ShopFolder folder;    ///< of the till
    TestFolder elsewhere; ///< of the server
    const QString configFile = folder.file(QStringLiteral("orva.toml"));
    const QString databaseFile = folder.file(QStringLiteral("till.sqlite"));
    till::doctor::Subject subject;
    bool writtenByHand = false;
    /// The doctor may do what anybody may, also where the tests are run by root.
    bool isOrdinaryUser = false;
    std::unique_ptr<Authority> authority;

private:
    void listen(const simulator::HttpServer::Certificate& certificate);

    const Way way;
    QMap<QString, QString> keys;
    QMap<QString, QString> soundKeys;
    QByteArray soundDatabase;
    std::unique_ptr<poshost::QueueBell> deliveryService;
    const simulator::Rules rules;
    LoyaltyServer server;
    int port = 0;
};

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "tests/support/authority.h"
#include "tests/support/loyaltyserver.h"
#include "tests/support/testfolder.h"
#include "till/doctor/doctor.h"

#include <QMap>

#include <functional>
#include <memory>

namespace tests {

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

    explicit Scene(Way way = Way::Http);

    /// Sets a key, "Table.key", to a value as TOML writes it; an empty value removes it.
    void set(const QString& key, const QString& toml);
    /// The server's address, with another path or what else follows the port.
    QString address(const QString& rest = QStringLiteral("/")) const;
    void setAddress(const QString& value);
    /// A quoted text.
    static QString quoted(const QString& text) { return u'"' + text + u'"'; }

    /// Lets a fault strike every request, or those to an endpoint.
    void strike(const simulator::Fault& fault, const QString& endpoint = QString());
    /// Lets the server show another certificate from now on.
    void showCertificate(const Authority::Certificate& certificate);
    void stopServer() { server.stopListening(); }
    /// Puts the real plug-in's key sheet beside a "liborva.so" in the till's folder.
    void giveKeySheet() const;
    /// The opened database, closed again afterwards.
    void inDatabase(const std::function<void(poshost::Database&)>& work) const;

    /// All that the server's books hold.
    QString books() const;

    /// Writes the configuration unless it was written by hand.
    void write() const;
    /// What the doctor says about all this.
    till::doctor::Report examine();
    /// identifier -> mark ("ok", "warning", "fails", "skipped").
    static QMap<QString, QString> marksOf(const till::doctor::Report& report);

    TestFolder folder;    ///< of the till
    TestFolder elsewhere; ///< of the server
    const QString configFile = folder.file(QStringLiteral("orva.toml"));
    const QString databaseFile = folder.file(QStringLiteral("till.sqlite"));
    till::doctor::Subject subject;
    bool writtenByHand = false;
    std::unique_ptr<Authority> authority;

private:
    const Way way;
    QMap<QString, QString> keys;
    LoyaltyServer server;
    int port = 0;
};

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/program.h"

#include <QJsonArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

/// A folder of the test's own, in which the built till and the books of the built server work.
class ShopFolder : public ::testing::Test
{
protected:
    QString folder() const { return scene.path(); }
    QString path(const QString& name) const { return scene.filePath(name); }
    /// For the owner only, as a configuration has to be.
    void writeFile(const QString& name, const QString& text) const;
    QString readFile(const QString& name) const;

    /// What each command of the till begins with.
    virtual QStringList tillArguments() const { return {}; }
    /// A till at work.
    std::unique_ptr<Program> startTill() const;
    /// One command of the till to its end.
    RunResult till(const QStringList& arguments) const;
    /// The same; anything but an exit code of 0 fails the test.
    QString done(const QStringList& arguments) const;
    /// What a command lists with --json.
    QJsonArray list(const QStringList& arguments) const;

    /// Starts the server on this folder's books. @return its address
    QString startServerWith(const QString& rules, int port);

    /// The books as "check,card,earned,spent,givenBack,takenBack".
    QString tillBooks() const;
    QString serverBooks() const;

    QTemporaryDir scene;
    std::unique_ptr<Program> server;
};

/// A shop of the built programs: one loyalty server and as many tills as a test starts, over
/// loopback.
class Shop : public ShopFolder
{
protected:
    void SetUp() override;

    /// Starts the server, the first time on a free port, later on the same one.
    /// @param rules a file of rules, empty for the built-in ones made strict
    void startServer(const QString& rules = QString());
    void stopServer();

    /// Leaves the confirmation of a sale undelivered: the server stops before the check is closed,
    /// and the till is killed after that.
    void closeWithoutServer(const QString& checkFile = QStringLiteral("sale.toml"));

    /// Writes orva.toml for the running server's address.
    void writeConfig(const QString& password = QStringLiteral("secret"),
                     const QString& address = QString()) const;
    /// Balance of the card that the sample sale presents, as the server prints it.
    QString balance() const;
    /// The numbers of the messages that are still to be delivered.
    int undelivered() const;

    QString address;
};

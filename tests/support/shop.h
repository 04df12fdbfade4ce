// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/program.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

/// A shop of the built programs: one loyalty server and as many tills as a test starts, in a folder
/// of the test's own, over loopback.
class Shop : public ::testing::Test
{
protected:
    void SetUp() override;

    /// Starts the server, the first time on a free port, later on the same one.
    /// @param rules a file of rules, empty for the built-in ones made strict
    void startServer(const QString& rules = QString());
    void stopServer();

    QString folder() const { return scene.path(); }
    QString path(const QString& name) const { return scene.filePath(name); }
    void writeFile(const QString& name, const QString& text) const;
    QString readFile(const QString& name) const;

    /// Writes orva.toml for the running server's address.
    void writeConfig(const QString& password = QStringLiteral("secret"),
                     const QString& address = QString()) const;
    /// A till at work in orva.toml's shop.
    std::unique_ptr<Program> startTill() const;
    /// One command of the till to its end.
    RunResult till(const QStringList& arguments) const;

    /// The books as "check,card,earned,spent,givenBack,takenBack".
    QString tillBooks() const;
    QString serverBooks() const;
    /// Balance of the card that the sample sale presents, as the server prints it.
    QString balance() const;
    /// The numbers of the messages that are still to be delivered.
    int undelivered() const;

    QTemporaryDir scene;
    std::unique_ptr<Program> server;
    QString address;
};

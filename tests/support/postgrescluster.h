// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/portreserve.h"

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A PostgreSQL server of a test's own: real files in a temporary folder, fsync on, run by an
/// unprivileged user, listening at 127.0.0.1 and gone with the test. Whatever goes wrong fails the
/// test with the server's log.
class PostgresCluster
{
public:
    /// Starts an empty server, which trusts who comes from this machine.
    /// @param settings further lines of its configuration
    explicit PostgresCluster(const QByteArray& settings = {});
    /// Stops it at once.
    ~PostgresCluster();
    PostgresCluster(const PostgresCluster&) = delete;
    PostgresCluster& operator=(const PostgresCluster&) = delete;

    /// Makes a standby that follows this server by streaming.
    /// @param name by which this server's synchronous_standby_names call it
    std::unique_ptr<PostgresCluster> makeStandby(const QString& name) const;

    int port() const { return address.port(); }
    /// A connection string of libpq for this server alone.
    QString connection(const QString& user = QStringLiteral("postgres"),
                       const QString& database = QStringLiteral("postgres")) const;
    /// One that names this server first and another one after it.
    QString connectionBefore(const PostgresCluster& other,
                             const QString& user = QStringLiteral("postgres")) const;

    /// Runs SQL as the superuser; several statements are one transaction unless they say otherwise.
    /// @return the rows, one a line, values with "|" between them; a failure of the test on an
    /// error
    QString sql(const QString& statements,
                const QString& database = QStringLiteral("postgres")) const;
    /// Sets a value for all sessions to come, and for those that follow a reload.
    void set(const QString& name, const QString& value) const;
    /// Waits until a query gives this. @return whether it did within 20 s
    bool waitFor(const QString& query, const QString& answer) const;

    /// As a power cut would: postmaster and every backend get SIGKILL.
    void kill();
    /// Stops all its processes where they are, and lets them go on.
    void freeze();
    void thaw();
    /// Starts it again after kill.
    void start();
    /// Makes a standby a primary; returns when it takes writes.
    void promote();

    /// The folder of its files.
    QString dataFolder() const { return folder.filePath(QStringLiteral("data")); }
    /// What the server has logged.
    QString log() const;

    /// Path of one of PostgreSQL's programs.
    static QString program(const QString& name);

private:
    struct Copy
    {};
    explicit PostgresCluster(Copy);

    void configure(const QByteArray& settings);
    void signalAll(int number) const;
    bool isReady() const;

    QTemporaryDir folder;
    QByteArray ownSettings;
    PortReserve address;
    QProcess server;
};

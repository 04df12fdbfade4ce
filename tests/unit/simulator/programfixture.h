// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/unit/simulator/testchecks.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

#include <httplib.h>

namespace simulator::test {

using namespace Qt::StringLiterals;

inline constexpr int patience = 30'000; // milliseconds; an upper bound, not a wait

/// orva-simulator as a process with its data in a temporary folder.
class Program : public testing::Test
{
protected:
    ~Program() override
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished(patience);
        }
    }

    void configure(QProcess& target, const QStringList& arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_HOME"_s, folder.path());
        target.setProcessEnvironment(environment);
        target.setProgram(QStringLiteral(ORVA_SIMULATOR_PROGRAM));
        target.setArguments(arguments);
    }

    /// Starts the server and returns its port once it listens.
    int serve(const QStringList& arguments = {})
    {
        configure(process, QStringList{u"--port"_s, u"0"_s} + arguments);
        process.start();
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(patience)) {
                ADD_FAILURE() << "no line: " << process.readAllStandardError().toStdString();
                return 0;
            }
        }
        const QString line = QString::fromUtf8(process.readLine()).trimmed();
        EXPECT_TRUE(line.startsWith(u"Listening on http://127.0.0.1:")) << line.toStdString();
        return QUrl(line.section(u' ', -1)).port();
    }

    struct Outcome
    {
        int exitCode;
        QString output;
        QString errors;
    };

    [[nodiscard]] Outcome run(const QStringList& arguments) const
    {
        QProcess other;
        configure(other, arguments);
        other.start();
        EXPECT_TRUE(other.waitForFinished(patience)) << other.errorString().toStdString();
        return {other.exitCode(), QString::fromUtf8(other.readAllStandardOutput()),
                QString::fromUtf8(other.readAllStandardError())};
    }

    [[nodiscard]] QString write(const QString& name, const QByteArray& text) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    static httplib::Result send(int port, const char* endpoint, const QByteArray& body)
    {
        httplib::Client client("127.0.0.1", port);
        client.set_read_timeout(20);
        const Request request = post(endpoint, body);
        return client.Post(request.path.toStdString(),
                           {{"Authorization", request.authorization.toStdString()}},
                           body.toStdString(), "application/xml");
    }

    QTemporaryDir folder;
    QProcess process;
};

/// Sends a check's confirmation and returns the status; 0 without an answer.
inline int statusOf(const httplib::Result& result)
{
    return result ? result->status : 0;
}

} // namespace simulator::test

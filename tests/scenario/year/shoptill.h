// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/program.h"
#include "till/checks/check.h"

#include <QList>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>

namespace year {

/// One of several tills of a shop with a store: a process with a folder of its own, which has the
/// till's configuration. Whatever the till answers that its cashier did not expect is a Violation.
class ShopTill
{
public:
    /// @param number its name, too
    ShopTill(QString tillFolder, int number) : folder(std::move(tillFolder)), own(number) {}

    int number() const { return own; }

    /// Starts the till's process.
    void start();
    /// Ends it as a cashier does, with no check open.
    void quit();
    /// It dies.
    void kill();

    /// Gives a command. @return the till's answer, whatever it is
    QString tell(const QString& command) { return process->command(command); }
    /// The same. @throws Violation unless the till says "ok"
    QString order(const QString& command);
    /// Returns without a message are settled with the store by the way, which no command waits for.
    /// @throws Violation where that takes longer than half a minute
    void awaitSettledReturns() const;
    /// @throws Violation where the answer to a command is a refusal
    void requireOk(const QString& command, const QString& answer) const;
    /// Gives a command and does not wait for what comes of it.
    void send(const QString& command) { process->send(command); }
    static bool isOk(const QString& answer) { return answer.endsWith(QStringLiteral("ok\n")); }

    /// Writes a check file into the till's folder.
    void write(const QString& file, const QString& text) const;
    /// What its file says was closed since the last call, the oldest first.
    QList<till::Check> takeClosed();
    void forEachClosed(const std::function<void(const till::Check&)>& take) const;

    /// One command of the till to its end, while its process does not run. @throws Violation when
    /// the code is not 0
    QString run(const QStringList& arguments) const;
    /// The files in its folder that have these bytes.
    QStringList filesWith(const QByteArray& bytes) const;

private:
    QString database() const { return folder + QStringLiteral("/till.sqlite"); }

    QString folder;
    int own;
    std::unique_ptr<Program> process;
    QSet<QString> known; ///< closed checks that were taken
};

} // namespace year

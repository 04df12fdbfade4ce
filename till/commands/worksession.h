// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <iosfwd>

namespace poshost {
class Database;
class RequestObserver;
} // namespace poshost

namespace till {

class CashDesk;
class Output;

/// A cashier's work, a command a line. Every command ends with one line that a script can wait for:
/// "ok", or "error: " and one sentence. Lines before it are for people: tables, "note: " and what
/// was done; whatever a server's or a file's text holds, none of them begins like the last one.
class WorkSession
{
public:
    /// @param checkClosed called after a check was closed or abandoned
    /// @param requestObserver hears of what a command waits for; must live longer
    WorkSession(CashDesk& cashDesk, poshost::Database& till, Output& output,
                const std::function<void()>& checkClosed,
                poshost::RequestObserver* requestObserver = nullptr);

    /// Reads commands until "quit", the end of the input or an answer that cannot be written, then
    /// lays the work down.
    /// @param prompt written before each command, for a person at a terminal; empty for none
    void run(std::istream& input, const QString& prompt = {});
    /// Does one command. @return false for "quit"
    bool command(const QString& line);

private:
    using Action = void (WorkSession::*)(const QString&);
    struct Entry;

    static const QList<Entry>& entries();
    static QString nearestCommand(const QString& name);
    void execute(const QString& name, const QString& rest);

    void open(const QString& file);
    void openReturn(const QString& file);
    void card(const QString& number);
    void quantity(const QString& rest);
    void price(const QString& rest);
    void request(const QString&);
    void points(const QString& choice);
    void tender(const QString& sum);
    void close(const QString&);
    void suspend(const QString& where);
    void restore(const QString& which);
    void abandon(const QString&);
    void show(const QString&);
    void queue(const QString&);
    void wait(const QString& seconds);
    void help(const QString&);

    CashDesk& desk;
    poshost::Database& database;
    Output& out;
    std::function<void()> closed;
    poshost::RequestObserver* observer;
};

} // namespace till

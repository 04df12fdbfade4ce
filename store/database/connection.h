// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/database/result.h"
#include "store/database/servers.h"
#include "store/database/storeerror.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QHash>
#include <QList>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>

struct pg_conn;

namespace orvastore {

/// A value of a command.
struct Value
{
    QByteArray bytes;
    bool isNull = false;
    bool isBinary = false;

    static Value text(const QString& text) { return {text.toUtf8(), false, false}; }
    static Value number(qint64 number) { return {QByteArray::number(number), false, false}; }
    /// Bytes as they are, for a bytea.
    static Value binary(const QByteArray& bytes) { return {bytes, false, true}; }
    static Value null() { return {{}, true, false}; }
};

/// One session at the store's primary. Every wait ends: a server or a network that falls silent
/// is an error of the command, after which the session is gone and the next command makes another.
/// One object belongs to one thread, but for interrupt().
class Connection
{
public:
    /// What the sessions of one use are like.
    struct Manner
    {
        /// The server ends a session that was silent so long, and so frees what it holds;
        /// 0: never.
        std::chrono::milliseconds longestSilence{0};
        /// Whether rows are found by indexes alone: a plan that was made while a table was small
        /// must not read all of it once it is large.
        bool byIndexes = false;
    };

    /// Connects with the first command.
    Connection(const StoreSettings& settings, const Manner& manner);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Makes sure that there is a session with a primary. @throws StoreError NothingSent
    void open();
    bool isOpen() const { return session != nullptr; }
    /// Ends the session; what it held is free.
    void close();
    /// How many sessions there have been: another number, another session.
    int generation() const { return sessions; }

    /// Runs one command; it is its own transaction unless one was begun. Kept prepared.
    /// @throws StoreError; Unknown too when the commit came with a warning: then it is not certain
    /// that a standby has it
    Result run(const QByteArray& sql, const QList<Value>& values = {});
    /// Runs a command as run does, and another one once its transaction has ended, in one round
    /// trip. What the other one answers is not told.
    /// @throws StoreError as run, of either
    Result runBefore(const QByteArray& next, const QList<Value>& itsValues, const QByteArray& sql,
                     const QList<Value>& values);
    /// Runs commands that come without values, several with ";" between them.
    void runAll(const QByteArray& sql);
    /// A limit of its own for commands that take long, such as a migration.
    void setLimit(std::chrono::milliseconds time) { limit = time; }
    /// When everything has to have ended, whatever each command might take; by itself: never.
    void setEnd(const QDeadlineTimer& time) { end = time; }

    /// Ends a command under way, and every later one, within about a second. Any thread.
    void interrupt();
    bool isInterrupted() const { return interrupted; }

private:
    struct Closing
    {
        void operator()(pg_conn* open) const;
    };
    using Session = std::unique_ptr<pg_conn, Closing>;

    Session connectTo(const Server& server, const QDeadlineTimer& deadline);
    void requirePrimary(const Session& tried, const Server& server) const;
    void openFirst(std::chrono::milliseconds time);
    void requireNewestTimeline(const Server& server);
    void prepare(const QByteArray& sql, qsizetype values);
    void prepareFirst(const QByteArray& sql, qsizetype values);
    void send(const QByteArray& sql, const QList<Value>& values);
    void requireGood(const Result& result);
    QDeadlineTimer inTime() const;
    Result finish(const QDeadlineTimer& deadline);
    void flush(const QDeadlineTimer& deadline);
    bool wait(int descriptor, short events, const QDeadlineTimer& deadline) const;
    [[noreturn]] void lose(const poshost::Message& reason);
    static void notice(void* connection, const struct pg_result* result);

    const StoreSettings settings;
    const Manner manner;
    Servers servers;
    std::chrono::milliseconds limit;
    QDeadlineTimer end{QDeadlineTimer::Forever};
    Session session;
    QHash<QByteArray, QByteArray> prepared; ///< names of the session's commands
    int sessions = 0;
    int newestTimeline = 0;
    bool warned = false;
    bool isDoubtful = false; ///< the first server has let a session down
    std::atomic<bool> interrupted = false;
    int bell = -1; ///< wakes a wait that is to end
};

} // namespace orvastore

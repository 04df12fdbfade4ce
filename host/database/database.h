// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QDeadlineTimer>
#include <QFileDevice>
#include <QString>
#include <functional>
#include <memory>

namespace poshost {

/// A connection to the till's SQLite file, which holds the outgoing queue and what else has
/// registered its tables (schemastep.h).
///
/// Belongs to the thread that opened it; other threads and processes open connections of their own
/// to the same file. What is committed is synced to the disk (write-ahead log, synchronous=FULL),
/// foreign keys are checked. Read and write with Statement, write several things together with
/// Transaction.
class HOST_EXPORT Database
{
public:
    /// How long a statement waits for another connection that is writing.
    static constexpr int defaultBusyMilliseconds = 5000;

    /// Opens the file. A missing one is created with the rights of rightsOf. Where others may open
    /// an existing one, that right is taken from them and a warning logged. An older schema is
    /// brought up to date in one transaction (schemastep.h).
    /// @param fileName its path; a relative one starts at the current folder
    /// @param busyMilliseconds limit of every wait for another connection, 0: do not wait
    /// @throws BasicException "databaseError", as DatabaseFailure where the system or SQLite has
    /// said why, when the file cannot be opened, is no till's
    /// database, was emptied or removed while its log holds what was written last, or was written
    /// by a newer version of the program, which is named; the file stays as it was.
    explicit Database(const QString& fileName, int busyMilliseconds = defaultBusyMilliseconds);
    /// The same for a file that holds other tables than a till's.
    /// @param fileName its path; a relative one starts at the current folder
    /// @param busyMilliseconds limit of every wait for another connection, 0: do not wait
    /// @param prepareTables called once with the new connection, to look whether the file is the
    /// right one and to make its tables or bring them up to date, in a transaction of its own; what
    /// it throws leaves the constructor, and the file as it was
    Database(const QString& fileName, const std::function<void(Database&)>& prepareTables,
             int busyMilliseconds);
    /// Opens an existing file to look at it. Nothing is written: neither the file nor its
    /// companions nor their rights, and the schema stays whichever it is. A file that nobody has
    /// open must stay so meanwhile: what another connection writes may be seen in part.
    /// @param fileName its path
    /// @param deadline what still runs then fails
    /// @return the connection; what writes on it throws
    /// @throws BasicException "databaseError" when the file cannot be opened, or was left in the
    /// middle of writing and cannot be read without finishing that
    static std::unique_ptr<Database> openForReading(const QString& fileName,
                                                    QDeadlineTimer deadline);
    /// Rolls back a transaction that is still open.
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Runs one SQL statement and drops its rows. Waits for the disk where it writes, and for
    /// another connection up to the busy time-out.
    /// @param sql its text, without values from outside: these are for Statement
    /// @throws BasicException "databaseError" with file and cause
    void execute(const QString& sql);
    /// Leaves nothing of deleted and overwritten rows in the file and its companions, by writing
    /// all of it anew. Takes as long as that, and as much room beside the file. Outside of
    /// transactions only.
    /// @return false: another connection is in the way, and something may be left
    /// @throws BasicException "databaseError" when the file cannot be written
    bool forgetDeleted();
    /// Whether a Transaction is open on this connection.
    bool isInTransaction() const;
    /// @return the file's absolute path
    QString fileName() const;

    /// @return the file that the configuration names under the key with ConfigKey::Use::Database;
    /// empty when it names none, or nobody has registered such a key
    static QString configuredFile();
    /// Who may open a database of that name: its owner, and the group where the folder is shared
    /// with it, which is a folder with the set-group-ID bit that the group may write and others may
    /// not enter. So several accounts may sell on one database, and deliver it.
    /// @param fileName its path; the file need not be there
    /// @return the rights that the file, its companions and its locks are made with
    static QFileDevice::Permissions rightsOf(const QString& fileName);
    /// @return the version that a file has after all registered steps (schemastep.h)
    static int schemaVersion();

private:
    friend class Statement;
    friend class Transaction;
    class Connection;

    explicit Database(std::unique_ptr<Connection> opened);

    std::unique_ptr<Connection> connection;
};

} // namespace poshost

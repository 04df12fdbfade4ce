// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QtPlugin>

/// The store: the books that the tills of a shop share. This header is all that a till knows of it;
/// what is behind it stands in a module that the till loads, and so needs no database library.
namespace orvastore {

/// Where the store is and how long it is waited for.
struct StoreSettings
{
    QString database;       ///< a connection string of libpq; without a password
    QString passwordFile;   ///< the file whose only line is the password; empty: none is needed
    int timeoutSeconds = 5; ///< of connecting, and of one hand-over; from 1
    QString program;        ///< what the server shows as the name of the connection
};

/// A message as the till's queue has it.
struct HandedMessage
{
    QString queue;         ///< name of its queue
    QString extra;         ///< as addToQueue was given it
    QByteArray headers;    ///< name -> value without the authorization, JSON
    QByteArray urls;       ///< number -> address, JSON
    QByteArray payload;    ///< the body that is posted, byte for byte
    QString authorization; ///< the value of that header; a secret; empty when there is none
    int stepsDone = 0;     ///< addresses that the till has posted to with success
    int attempts = 0;      ///< requests that the till has sent or begun to send, over all steps
    int stepAttempts = 0;  ///< of these, of the step that comes next
};

/// What a return takes of one line of its sale.
struct ReturnedLine
{
    int position = 0;           ///< of the line in the sale, from 1
    qint64 thousandths = 0;     ///< of a piece or of a unit that come back; above 0
    qint64 soldThousandths = 0; ///< that the sale's line has; never less than thousandths
};

/// A closed check with its messages.
struct HandedCheck
{
    /// The check's own identifier, unique over all tills: the key by which handing over is
    /// repeated.
    QString identifier;
    QString shop;       ///< whose check it is
    QString till;       ///< the till's name
    qint64 number = 0;  ///< of the check at its till
    QDateTime closedAt; ///< as the till's clock had it; the same at each repetition
    /// Checks of one name are delivered one after another, in the order in which they are handed
    /// over. Empty: a lane of its own. Only a digest of it is stored.
    QString laneName;
    QString saleIdentifier;        ///< of a return: the check whose lane it joins; empty otherwise
    QList<ReturnedLine> returned;  ///< of a return: what comes back; empty otherwise
    QByteArray content;            ///< the check as the till keeps it
    QList<HandedMessage> messages; ///< in the order of delivery; may be empty
};

/// How something that the store was asked for has ended.
enum class StoreEnd
{
    Done, ///< durable in the store, now or by an earlier call
    /// The store keeps nothing of this call, for certain, and takes nothing at present: it is
    /// away, full, read-only, or of a version that this program cannot work with. A check that is
    /// handed over waits, and no later one of its lane may go before it.
    Unreachable,
    Unknown, ///< it may have arrived: only repeating it tells
    /// The store has said no to this and kept nothing of it, for certain; it takes other things.
    Refused,
};

/// What became of it.
struct StoreResult
{
    StoreEnd end = StoreEnd::Unreachable; ///< how it ended
    poshost::Message error;               ///< a sentence for people; empty when Done
    /// With Refused: it contradicts what the store has of another till, so that repeating it ends
    /// in the same way until a person has decided.
    bool isConflict = false;
};

/// A till's way to the store. One object belongs to one thread, but for interrupt().
class StoreClient
{
public:
    virtual ~StoreClient() = default;

    /// Takes the settings; connects with the first hand-over. Never throws, does not block.
    /// @param settings what holds from now on; a connection that is open is closed
    virtual void open(const StoreSettings& settings) = 0;
    /// Hands checks over, one transaction each, in their order. Each is safe to repeat by its
    /// identifier: it is kept once. After the first that is not Done nor Refused the others are
    /// not tried and are Unreachable. Never throws. Blocks up to the time-out for connecting and
    /// up to the time-out for each check.
    /// @param checks any number
    /// @return as many results, in the same order
    virtual QList<StoreResult> handOver(const QList<HandedCheck>& checks) = 0;
    /// Makes handOver, now and from now on, return within about a second. Any thread; does not
    /// wait. What was under way is Unknown.
    virtual void interrupt() = 0;
    /// Makes sure that there is a connection to a store that takes checks, so that nothing is noted
    /// as begun for a store that is away. Never throws. Blocks up to the time-out.
    /// @return Done, or Unreachable with the reason
    virtual StoreResult reach() { return {StoreEnd::Done, {}}; }
};

class SharedBooks;

/// What a till's process loads once to reach a store: it makes the ways there, each for a thread of
/// its own. Any thread.
class StoreDriver
{
public:
    virtual ~StoreDriver() = default;

    /// @return a way to hand checks over, not opened yet
    virtual QSharedPointer<StoreClient> makeClient() = 0;
    /// @return a way to what the tills share beside that, not opened yet
    virtual QSharedPointer<SharedBooks> makeBooks() = 0;
};

} // namespace orvastore

Q_DECLARE_INTERFACE(orvastore::StoreDriver, "org.orva.StoreDriver/1")

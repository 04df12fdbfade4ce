// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"

#include <QDateTime>
#include <QMap>
#include <QString>

namespace poshost {

/// How a message of the outgoing queue stands.
enum class QueueState
{
    Waiting,   ///< is sent when its turn comes
    Paused,    ///< waits until its authorization or address is put right
    Parked,    ///< is left out until somebody looks at it
    Delivered, ///< all its steps are done
};

/// A message of the outgoing queue without its content.
struct QueueEntry
{
    qint64 id = 0; ///< number by which it is called, larger for those stored later
    QString queue; ///< name of its queue
    QString extra; ///< as addToQueue was given it
    /// How it stands.
    QueueState state = QueueState::Waiting;
    int steps = 0;           ///< addresses to post to
    int stepsDone = 0;       ///< of these, finished
    int attempts = 0;        ///< requests sent, or begun to be sent, over all steps
    int lastStatus = 0;      ///< HTTP status of the last answer, 0 without one
    Message obstacle;        ///< what is in the way; empty when nothing is
    QString lastError;       ///< the same in Russian
    qint64 waitsFor = 0;     ///< an undelivered message that must go first, 0 for none
    QDateTime createdAt;     ///< local time
    QDateTime nextAttemptAt; ///< invalid: as soon as its turn comes
    QDateTime deliveredAt;   ///< invalid: not yet
    /// A store has it or may have it: delivered, it is the store's to send; before that, whether
    /// the store has it is to be asked again.
    bool isHandedOver = false;
};

/// A message with its content, fit to be shown: "***" stands for secrets.
struct QueueContent
{
    QueueEntry entry;               ///< the message
    QString payload;                ///< the body that is posted
    QMap<QString, QString> headers; ///< by their names
    QStringList addresses;          ///< in the order of the steps
    QString lastAnswer;             ///< beginning of the server's last refusal
};

/// How many messages stand how.
struct QueueCounts
{
    int waiting = 0;   ///< for their turn
    int paused = 0;    ///< until authorization or address is put right
    int parked = 0;    ///< left out
    int delivered = 0; ///< done, and not removed yet
};

} // namespace poshost

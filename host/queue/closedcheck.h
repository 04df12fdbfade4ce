// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"
#include "store/storeclient.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QtGlobal>
#include <optional>

namespace poshost {

class Database;

/// A closed check as the queue hands it over to a store together with its message.
struct ClosedCheck
{
    QString identifier; ///< unique over all tills; the same at each repetition
    QString till;       ///< the till's name
    qint64 number = 0;  ///< of the check at its till
    QDateTime closedAt; ///< when it was closed, the same at each repetition
    /// Of a return: the identifier of the check that it returns; empty otherwise.
    QString saleIdentifier;
    /// Of a return: what comes back; empty otherwise, and where that cannot be read.
    QList<orvastore::ReturnedLine> returned;
    QByteArray content; ///< as its owner keeps it
};

/// @param shop whose check it is
/// @return the check as the store takes it, without messages and in no lane
inline orvastore::HandedCheck handedCheckOf(const ClosedCheck& closed, const QString& shop)
{
    orvastore::HandedCheck check;
    check.identifier = closed.identifier;
    check.shop = shop;
    check.till = closed.till;
    check.number = closed.number;
    check.closedAt = closed.closedAt;
    check.saleIdentifier = closed.saleIdentifier;
    check.returned = closed.returned;
    check.content = closed.content;
    return check;
}

/// Reads the closed check that a message belongs to.
/// @param database the file with both
/// @param messageId of the queue
/// @return nothing when no check knows the message: then it is never handed over
/// @throws BasicException "databaseError"
using ReadClosedCheck = std::optional<ClosedCheck> (*)(Database& database, qint64 messageId);

/// Says where closed checks are kept. Without it nothing is handed over to a store: the queue knows
/// messages only. To be called before the first Database is opened.
/// @param read called on the thread that delivers; null: nobody keeps checks
HOST_EXPORT void registerClosedChecks(ReadClosedCheck read);

} // namespace poshost

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/storeclient.h"

#include <QList>
#include <QString>
#include <QtGlobal>
#include <optional>

namespace poshost {

class Database;

/// A message that is being handed over with its check.
struct HandOverEntry
{
    qint64 messageId = 0;
    /// An earlier hand-over of it was begun whose end nobody knows: it may be in the store.
    bool isRepeated = false;
    orvastore::HandedCheck check;
};

/// The durable memory of handing over: which messages go next, that handing them over was begun,
/// what came of it. A message is "begun" before anything of it is sent, and from then on the till
/// does not deliver it itself unless the store has certainly not got it.
///
/// Every operation throws BasicException "databaseError" when the file cannot be read or written.
class HandOverJournal
{
public:
    explicit HandOverJournal(Database& owner) : database(owner) {}

    /// Whether anything is to be handed over now.
    bool isAnythingDue();
    /// Notes the next messages as begun: those first whose hand-over was begun before, then the
    /// others in their order. A message that is damaged is parked, and one that belongs to no check
    /// is left to the till's own delivery.
    /// @param shop whose checks these are
    QList<HandOverEntry> begin(const QString& shop);
    /// Writes down what became of messages, all of it or nothing.
    void record(const QList<HandOverEntry>& entries, const QList<orvastore::StoreResult>& results);
    /// Whether there are messages that the till delivers itself since they belong to no check.
    bool hasOwn();
    /// How many messages were parked since the last call because their record is damaged, or
    /// since the store has something that contradicts them.
    int takeParked();

private:
    QList<qint64> dueIds(int most);
    QList<qint64> dueOfAccount(qint64 accountId, qint64 now, int most, qint64& end);
    std::optional<HandOverEntry> read(qint64 messageId, const QString& shop);
    void note(QList<HandOverEntry>& entries, const QList<qint64>& own);
    void park(qint64 messageId, const poshost::Message& why);
    void write(const HandOverEntry& entry, const orvastore::StoreResult& result, qint64 now);
    void finish(qint64 messageId, qint64 now);

    Database& database;
    int parked = 0;
};

} // namespace poshost

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/deliverytask_p.h"

#include <QList>
#include <QString>
#include <optional>

namespace poshost {

class Statement;

/// Which messages of a queue a till delivers itself. Never one whose hand-over to a store was
/// begun.
struct OwnShare
{
    bool hasStore = false; ///< those that belong to no check, and so are not handed over
    /// As well those of that age, in milliseconds, that were never begun; a return of what was
    /// handed over is the store's.
    std::optional<qint64> fromAge = std::nullopt;

    friend bool operator==(const OwnShare& left, const OwnShare& right) = default;
};

/// What was taken to be sent and is not written down yet, and which message may go beside it.
class RequestsUnderWay
{
public:
    void clear() { requests.clear(); }
    /// Which messages may be taken at all.
    /// @param share of the queue that is this delivery's
    void limitTo(const OwnShare& share);
    void add(const DeliveryTask& task);
    void remove(const DeliveryTask& task);

    /// Whether another message may be taken at all. A probe finds out whether a queue or an
    /// authorization that was held back can go on; until it has, nothing else is taken.
    bool allowAnother() const;
    /// SQL that gives the message which is due: the oldest one of those that wait neither by
    /// themselves, nor for another one, nor for their queue or authorization, nor because one of
    /// their lane is under way. One value, NULL when none is due.
    /// @param beside whether anything is under way
    const QString& selectDue(bool beside) const { return beside ? dueBeside : dueAlone; }
    bool isEmpty() const { return requests.isEmpty(); }
    /// Binds the values of selectDue, which must be the first ones of the statement.
    void bindTo(Statement& statement, qint64 now) const;

private:
    struct Request
    {
        qint64 messageId;
        qint64 lane;
        bool isProbe;
    };

    QList<Request> requests;
    QString dueAlone;
    QString dueBeside;
};

} // namespace poshost

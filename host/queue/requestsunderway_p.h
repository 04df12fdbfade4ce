// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/deliverytask_p.h"

#include <QList>
#include <QString>

namespace poshost {

class Statement;

/// What was taken to be sent and is not written down yet, and which message may go beside it.
class RequestsUnderWay
{
public:
    void clear() { requests.clear(); }
    void add(const DeliveryTask& task);
    void remove(const DeliveryTask& task);

    /// Whether another message may be taken at all. A probe finds out whether a queue or an
    /// authorization that was held back can go on; until it has, nothing else is taken.
    bool allowAnother() const;
    /// SQL that gives the message which is due: the oldest one of those that wait neither by
    /// themselves, nor for another one, nor for their queue or authorization, nor because one of
    /// their lane is under way. One value, NULL when none is due.
    /// @param beside whether anything is under way
    static const QString& selectDue(bool beside);
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
};

} // namespace poshost

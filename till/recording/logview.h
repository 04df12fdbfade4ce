// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/record.h"

#include <QJsonArray>
#include <QList>
#include <QString>

/// Records for people and programs. Cards show their last four digits only.
namespace till::logview {

/// What the plug-in sent: a posted request or a queued message.
struct Sent
{
    QJsonObject call;
    QJsonObject event;

    bool isExchange() const { return event.contains(u"exchange"); }
    /// The inner object of the event.
    QJsonObject content() const;
    /// Such as "200", "409", "queued", or why nothing came.
    QString outcome() const;
};

QList<Sent> sentIn(const Record& record);

/// A line for each exchange and message.
QString table(const QList<Record>& records);
QString json(const QList<Record>& records);

/// The calls in their order, each request beside its answer.
/// @param only number of the one exchange or message to show; 0: all
QString text(const Record& record, int only);

/// The check that a record is about, as a few words.
QString title(const Record& record);

} // namespace till::logview

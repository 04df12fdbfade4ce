// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/queue/queueview.h"

#include "console/language.h"
#include "console/printable.h"
#include "console/table.h"
#include "console/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace console {
namespace {

QString stateName(poshost::QueueState state)
{
    switch (state) {
    case poshost::QueueState::Waiting:
        return u"waiting"_s;
    case poshost::QueueState::Paused:
        return u"paused"_s;
    case poshost::QueueState::Parked:
        return u"parked"_s;
    case poshost::QueueState::Delivered:
        return u"delivered"_s;
    }
    return {};
}

/// The state as people read it.
QString stateText(poshost::QueueState state)
{
    switch (state) {
    case poshost::QueueState::Waiting:
        return Text::tr("waiting");
    case poshost::QueueState::Paused:
        return Text::tr("paused");
    case poshost::QueueState::Parked:
        return Text::tr("parked");
    case poshost::QueueState::Delivered:
        return Text::tr("delivered");
    }
    return {};
}

QString timeText(const QDateTime& time)
{
    return time.isValid() ? time.toString(u"yyyy-MM-dd hh:mm:ss"_s) : QString();
}

/// The state with who has it.
QString stateText(const poshost::QueueEntry& entry)
{
    return entry.isHandedOver && entry.state == poshost::QueueState::Delivered
               ? Text::tr("handed over")
               : stateText(entry.state);
}

QString said(const poshost::Message& message)
{
    return message.in(spokenLanguage() == "ru"_L1 ? poshost::Language::Russian
                                                  : poshost::Language::English);
}

/// What keeps a message from being sent now.
QString obstacle(const poshost::QueueEntry& entry)
{
    return entry.waitsFor != 0 ? Text::tr("waits for message %1").arg(entry.waitsFor)
                               : said(entry.obstacle);
}

QJsonObject object(const poshost::QueueEntry& entry)
{
    return {{u"id"_s, entry.id},
            {u"queue"_s, entry.queue},
            {u"state"_s, stateName(entry.state)},
            {u"steps"_s, entry.steps},
            {u"stepsDone"_s, entry.stepsDone},
            {u"attempts"_s, entry.attempts},
            {u"lastStatus"_s, entry.lastStatus},
            {u"lastError"_s, entry.lastError},
            {u"waitsFor"_s, entry.waitsFor},
            {u"createdAt"_s, entry.createdAt.toString(Qt::ISODate)},
            {u"nextAttemptAt"_s, entry.nextAttemptAt.toString(Qt::ISODate)},
            {u"handedOver"_s, entry.isHandedOver},
            {u"deliveredAt"_s, entry.deliveredAt.toString(Qt::ISODate)}};
}

} // namespace

QString queueview::table(const QList<poshost::QueueEntry>& entries, int width)
{
    using Align = Table::Align;
    Table table({{Text::tr("No"), Align::Right},
                 {Text::tr("Queue")},
                 {Text::tr("State")},
                 {Text::tr("Steps"), Align::Right},
                 {Text::tr("Attempts"), Align::Right},
                 {Text::tr("Status"), Align::Right},
                 {Text::tr("Created")},
                 {Text::tr("Next attempt")},
                 {Text::tr("What is in the way"), Align::Left, Table::Narrow::Below}});
    for (const poshost::QueueEntry& entry : entries) {
        table.addRow({QString::number(entry.id), entry.queue, stateText(entry),
                      u"%1/%2"_s.arg(entry.stepsDone).arg(entry.steps),
                      QString::number(entry.attempts),
                      entry.lastStatus == 0 ? QString() : QString::number(entry.lastStatus),
                      timeText(entry.createdAt), timeText(entry.nextAttemptAt), obstacle(entry)});
    }
    return table.text(width);
}

QString queueview::json(const QList<poshost::QueueEntry>& entries)
{
    QJsonArray array;
    for (const poshost::QueueEntry& entry : entries) {
        array.append(object(entry));
    }
    return QString::fromUtf8(QJsonDocument(array).toJson());
}

QString queueview::text(const poshost::QueueContent& content, int width)
{
    QString text = table({content.entry}, width) + u'\n';
    for (qsizetype i = 0; i < content.addresses.size(); ++i) {
        text += Text::tr("Step %1: %2\n").arg(i + 1).arg(printable::line(content.addresses.at(i)));
    }
    for (auto it = content.headers.cbegin(); it != content.headers.cend(); ++it) {
        text += u"%1: %2\n"_s.arg(printable::line(it.key()), printable::line(it.value()));
    }
    text += u'\n' + content.payload;
    if (!text.endsWith(u'\n')) {
        text += u'\n';
    }
    if (!content.lastAnswer.isEmpty()) {
        text += Text::tr("\nThe server's last refusal:\n%1\n").arg(content.lastAnswer);
    }
    return text;
}

QString queueview::json(const poshost::QueueContent& content)
{
    QJsonObject result = object(content.entry);
    QJsonObject headers;
    for (auto it = content.headers.cbegin(); it != content.headers.cend(); ++it) {
        headers.insert(it.key(), it.value());
    }
    result.insert(u"addresses"_s, QJsonArray::fromStringList(content.addresses));
    result.insert(u"headers"_s, headers);
    result.insert(u"payload"_s, content.payload);
    result.insert(u"lastAnswer"_s, content.lastAnswer);
    return QString::fromUtf8(QJsonDocument(result).toJson());
}

} // namespace console

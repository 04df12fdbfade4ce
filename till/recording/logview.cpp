// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/logview.h"

#include "console/printable.h"
#include "host/document/edocumenttype.h"
#include "host/queue/xmltext.h"
#include "till/recording/recordedevents.h"
#include "till/recording/sidebyside.h"
#include "till/recording/valuejson.h"
#include "till/screen/checkview.h"
#include "till/screen/table.h"
#include "till/text.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace till {
namespace {

namespace printable = console::printable;

using logview::Sent;

/// A text of the record in one line: the record may come from anywhere.
QString lineOf(const QJsonValue& text)
{
    return printable::line(text.toString());
}

QString timeText(const QJsonValue& time)
{
    return lineOf(time).left(19).replace(u'T', u' ');
}

QString milliseconds(const QJsonObject& object)
{
    return QString::number(object.value("milliseconds"_L1).toDouble(), 'f', 1);
}

bool isReturn(const Record& record)
{
    return record.document(0).value("type"_L1).toInt() == int(EDocumentType::ReturnBySale);
}

QString cardText(const Record& record)
{
    const QString card = record.cardNumber();
    return card.isEmpty() ? QString() : checkview::shortCard(card);
}

QString checkNumber(const Record& record)
{
    return QString::number(record.document(0).value("number"_L1).toInt());
}

qsizetype bytesOf(const QJsonValue& body)
{
    return valuejson::toBytes(body).size();
}

QJsonObject sentJson(const Sent& sent)
{
    const QJsonObject content = sent.content();
    QJsonObject object{{u"call"_s, sent.call.value("call"_L1)},
                       {u"at"_s, sent.call.value("at"_L1)},
                       {u"kind"_s, sent.isExchange() ? u"exchange"_s : u"message"_s},
                       {u"outcome"_s, sent.outcome()}};
    if (sent.isExchange()) {
        object.insert(u"url"_s, content.value("url"_L1));
        object.insert(u"status"_s, content.value("status"_L1));
        object.insert(u"milliseconds"_s, content.value("milliseconds"_L1));
        object.insert(u"requestBytes"_s, bytesOf(content.value("request"_L1)));
        object.insert(u"answerBytes"_s, bytesOf(content.value("answer"_L1)));
    }
    return object;
}

QString heading(const Record& record)
{
    const QJsonObject& header = record.header;
    QString text = Text::tr("Record %1 of %2: %3\n")
                       .arg(record.number())
                       .arg(timeText(header.value("started"_L1)), logview::title(record));
    text += Text::tr("Check %1, plug-in %2 (build %3), program %4\n")
                .arg(printable::line(record.checkId()), lineOf(header.value("plugin"_L1)),
                     lineOf(header.value("pluginBuild"_L1)), lineOf(header.value("program"_L1)));
    if (record.cut) {
        text += Text::tr("The record was cut off.\n");
    }
    return text;
}

/// What the plug-in asked for, in its order, the same things counted.
QString askedFor(const QJsonObject& call)
{
    QStringList names;
    int times = 0;
    const auto addName = [&](const QString& name, int more) {
        const bool again = !names.isEmpty() && names.last().section(u' ', 0, 0) == name;
        times = again ? times + more : more;
        const QString text = times > 1 ? u"%1 ×%2"_s.arg(name).arg(times) : name;
        if (again) {
            names.last() = text;
        } else {
            names.append(text);
        }
    };
    const QJsonArray events = call.value("events"_L1).toArray();
    for (const auto& entry : events) {
        const QJsonObject event = entry.toObject();
        addName(event.contains("transport"_L1)  ? event.value("transport"_L1).toString()
                : event.contains("exchange"_L1) ? u"post"_s
                : event.contains("queue"_L1)    ? u"addToQueue"_s
                                                : u"clock"_s,
                RecordedEvents::timesOf(event));
    }
    return printable::line(names.join(u", "_s));
}

QString outcomeOf(const QJsonObject& call)
{
    const QString name = call.contains("thrown"_L1) ? u"thrown"_s : u"result"_s;
    const QByteArray value =
        QJsonDocument(QJsonArray{call.value(name)}).toJson(QJsonDocument::Compact);
    constexpr qsizetype longest = 100;
    const QString text = QString::fromUtf8(value.chopped(1).sliced(1));
    const QString cut = text.size() > longest ? text.first(longest) + u'…' : text;
    return name == u"thrown"_s ? Text::tr("throws %1").arg(cut) : cut;
}

QString callText(const QJsonObject& call, int number)
{
    QString text = Text::tr("%1. %2 at %3, %4 ms: %5\n")
                       .arg(number)
                       .arg(lineOf(call.value("call"_L1)), lineOf(call.value("at"_L1)).mid(11, 12),
                            milliseconds(call), outcomeOf(call));
    const QString asked = askedFor(call);
    if (!asked.isEmpty()) {
        text += u"   "_s + asked + u'\n';
    }
    return text;
}

QString withoutCard(QString text, const QString& card)
{
    return card.isEmpty() ? text : text.replace(card, checkview::shortCard(card));
}

QString bodyText(const QJsonValue& body, const QString& card)
{
    return withoutCard(poshost::xmltext::decoded(valuejson::toBytes(body)), card);
}

QString sentText(const Sent& sent, int number, const QString& card)
{
    const QJsonObject content = sent.content();
    if (!sent.isExchange()) {
        const QJsonObject message = content.value("message"_L1).toObject();
        return Text::tr("Message %1 into the queue \"%2\": %3\n")
                   .arg(number)
                   .arg(lineOf(content.value("name"_L1)), printable::line(sent.outcome())) +
               sidebyside::numbered(withoutCard(message.value("payload"_L1).toString(), card));
    }
    return Text::tr("Exchange %1: POST %2: %3, %4 ms\n")
               .arg(number)
               .arg(lineOf(content.value("url"_L1)), printable::line(sent.outcome()),
                    milliseconds(content)) +
           sidebyside::columns(Text::tr("Request"), bodyText(content.value("request"_L1), card),
                               Text::tr("Answer"), bodyText(content.value("answer"_L1), card));
}

} // namespace

QJsonObject logview::Sent::content() const
{
    return event.value(isExchange() ? "exchange"_L1 : "queue"_L1).toObject();
}

QString logview::Sent::outcome() const
{
    const QJsonObject inner = content();
    if (!isExchange()) {
        return inner.contains("thrown"_L1) ? Text::tr("not queued") : Text::tr("queued");
    }
    const int status = inner.value("status"_L1).toInt();
    const QString error = inner.value("errorText"_L1).toObject().value("text"_L1).toString();
    return status > 0 ? QString::number(status) : error;
}

QList<Sent> logview::sentIn(const Record& record)
{
    QList<Sent> all;
    for (const QJsonObject& call : record.calls) {
        const QJsonArray events = call.value("events"_L1).toArray();
        for (const auto& entry : events) {
            const QJsonObject event = entry.toObject();
            if (event.contains("exchange"_L1) || event.contains("queue"_L1)) {
                all.append({call, event});
            }
        }
    }
    return all;
}

QString logview::title(const Record& record)
{
    const QString kind = isReturn(record) ? Text::tr("return") : Text::tr("sale");
    const QString card = cardText(record);
    return printable::line(Text::tr("%1 No %2").arg(kind, checkNumber(record)) +
                           (card.isEmpty() ? QString() : Text::tr(", card %1").arg(card)));
}

QString logview::table(const QList<Record>& records)
{
    using Align = Table::Align;
    Table table({{Text::tr("Record"), Align::Right},
                 {Text::tr("Time")},
                 {Text::tr("Kind")},
                 {Text::tr("No"), Align::Right},
                 {Text::tr("Card")},
                 {Text::tr("Call")},
                 {Text::tr("Outcome")},
                 {Text::tr("ms"), Align::Right},
                 {Text::tr("Check")}});
    for (const Record& record : records) {
        const QString kind = isReturn(record) ? Text::tr("return") : Text::tr("sale");
        const QList<Sent> all = sentIn(record);
        const auto addRow = [&](const QString& number, const QJsonValue& time, const QString& call,
                                const QString& outcome, const QString& duration) {
            table.addRow({number, timeText(time), kind, checkNumber(record), cardText(record), call,
                          outcome, duration, record.checkId()});
        };
        for (qsizetype i = 0; i < all.size(); ++i) {
            const Sent& sent = all.at(i);
            addRow(u"%1.%2"_s.arg(record.number()).arg(i + 1), sent.call.value("at"_L1),
                   sent.call.value("call"_L1).toString(), sent.outcome(),
                   sent.isExchange() ? milliseconds(sent.content()) : QString());
        }
        if (all.isEmpty()) {
            addRow(QString::number(record.number()), record.header.value("started"_L1), {}, {}, {});
        }
    }
    return table.text();
}

QString logview::json(const QList<Record>& records)
{
    QJsonArray array;
    for (const Record& record : records) {
        QJsonArray all;
        const QList<Sent> sent = sentIn(record);
        for (const Sent& one : sent) {
            all.append(sentJson(one));
        }
        array.append(QJsonObject{{u"record"_s, record.number()},
                                 {u"started"_s, record.header.value("started"_L1)},
                                 {u"kind"_s, isReturn(record) ? u"return"_s : u"sale"_s},
                                 {u"number"_s, record.document(0).value("number"_L1)},
                                 {u"check"_s, record.checkId()},
                                 {u"card"_s, cardText(record)},
                                 {u"calls"_s, record.calls.size()},
                                 {u"cut"_s, record.cut},
                                 {u"sent"_s, all}});
    }
    return QString::fromUtf8(QJsonDocument(array).toJson());
}

QString logview::text(const Record& record, int only)
{
    const QString card = record.cardNumber();
    QString text = heading(record);
    int calls = 0;
    int number = 0;
    for (const QJsonObject& call : record.calls) {
        ++calls;
        Record one;
        one.calls = {call};
        const QList<Sent> all = sentIn(one);
        const bool wanted = only == 0 || (only > number && only <= number + all.size());
        text += wanted ? u'\n' + callText(call, calls) : QString();
        for (const Sent& sent : all) {
            ++number;
            text += only == 0 || only == number ? sentText(sent, number, card) : QString();
        }
    }
    return withoutCard(text, card);
}

} // namespace till

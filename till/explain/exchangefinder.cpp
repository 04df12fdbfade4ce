// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/explain/exchangefinder.h"

#include "host/queue/outgoingqueue.h"
#include "host/queue/xmltext.h"
#include "protocol/keptanswer.h"
#include "protocol/xmldifference.h"
#include "protocol/xmltree.h"
#include "till/checks/check.h"
#include "till/checks/checkstore.h"
#include "till/recording/logview.h"
#include "till/recording/recordfolder.h"
#include "till/recording/valuejson.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

QString originOf(const Record& record, const logview::Sent& sent, qsizetype number)
{
    return Text::tr("record %1, exchange %2 of %3")
        .arg(record.number())
        .arg(number)
        .arg(sent.call.value("at"_L1).toString().left(19).replace(u'T', u' '));
}

/// The last successful request and the last queued message win: those before were asked anew.
void takeFrom(const Record& record, Exchange& exchange)
{
    const QList<logview::Sent> all = logview::sentIn(record);
    for (qsizetype i = 0; i < all.size(); ++i) {
        const logview::Sent& sent = all.at(i);
        const QString name = sent.call.value("call"_L1).toString();
        const QJsonObject content = sent.content();
        const bool succeeded = sent.call.value("result"_L1).toBool();
        if (name == u"request"_s && sent.isExchange() && succeeded) {
            exchange.answer = valuejson::toBytes(content.value("answer"_L1));
            exchange.answerOrigin = originOf(record, sent, i + 1);
            exchange.recorded = true;
        } else if (!sent.isExchange() && succeeded && !content.contains("thrown"_L1)) {
            const QJsonObject message = content.value("message"_L1).toObject();
            exchange.confirmation = message.value("payload"_L1).toString().toUtf8();
            exchange.confirmationOrigin = originOf(record, sent, i + 1);
        }
    }
}

} // namespace

Exchange ExchangeFinder::find(const Check& check) const
{
    Exchange exchange;
    findInRecords(check, exchange);
    compareWithKept(check, exchange);
    if (exchange.confirmation.isEmpty()) {
        findInQueue(check, exchange);
    }
    return exchange;
}

void ExchangeFinder::findInRecords(const Check& check, Exchange& exchange) const
{
    const QList<RecordFile> files = folder == nullptr ? QList<RecordFile>() : folder->records();
    for (const RecordFile& entry : files) {
        QFile file(entry.path);
        // most files are about other checks and need not be taken apart
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        const QByteArray content = file.readAll();
        if (!content.contains(check.id().toUtf8())) {
            continue;
        }
        const QList<Record> records = Record::parse(content, entry.path);
        for (const Record& record : records) {
            if (record.checkId() == check.id()) {
                takeFrom(record, exchange);
            }
        }
    }
}

/// The check keeps what the plug-in read last: a recording with a gap, or one that was edited, has
/// another answer.
void ExchangeFinder::compareWithKept(const Check& check, Exchange& exchange) const
{
    const QByteArray kept = protocol::keptAnswer(*check.document);
    if (exchange.answer.isEmpty() || !protocol::XmlTree(exchange.answer).problem().isEmpty()) {
        exchange.answer = kept;
        exchange.answerOrigin = Text::tr("the answer as the check keeps it");
        exchange.recorded = false;
        return;
    }
    const auto difference = protocol::XmlDifference::between(exchange.answer, kept);
    if (!kept.isEmpty() && difference && !difference->path.isEmpty()) {
        exchange.problem = Text::tr("the recorded answer is not the one that the check keeps: %1 "
                                    "(line %2) is \"%3\" and was \"%4\"")
                               .arg(difference->path)
                               .arg(difference->line)
                               .arg(difference->first, difference->second);
    }
}

void ExchangeFinder::findInQueue(const Check& check, Exchange& exchange) const
{
    const std::optional<qint64> message = store.messageOf(check.id());
    if (!message) {
        return;
    }
    if (const auto content = poshost::OutgoingQueue(till).show(*message)) {
        exchange.confirmation = poshost::xmltext::declaredAsUtf8(content->payload.toUtf8());
        exchange.confirmationOrigin = Text::tr("message %1 of the queue").arg(*message);
    }
}

} // namespace till

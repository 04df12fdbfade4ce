// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/casereport/casereport.h"

#include "till/casereport/durationchart_p.h"
#include "till/casereport/slipsection_p.h"
#include "till/casereport/xmlpane_p.h"
#include "till/recording/logview.h"
#include "till/recording/valuejson.h"
#include "till/text.h"

#include <QJsonArray>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

using logview::Sent;

QString timeOf(const QJsonValue& time)
{
    return time.toString().left(23).replace(u'T', u' ');
}

/// A document that a plug-in sent or got, with the number of its exchange.
struct ShownExchange
{
    Sent sent;
    XmlPane request;
    XmlPane answer; ///< of a queued message nothing
};

class CaseWriter
{
public:
    CaseWriter(const CaseMaterial& given, const ReportPage::Mask& mask, const QString& language)
        : material(given),
          page(Text::tr("Case: %1").arg(logview::title(given.record)), mask, language)
    {
        int number = 0;
        const QList<Sent> all = logview::sentIn(material.record);
        for (const Sent& sent : all) {
            ++number;
            const QJsonObject content = sent.content();
            const QByteArray request = sent.isExchange()
                                           ? valuejson::toBytes(content.value("request"_L1))
                                           : content.value("message"_L1)
                                                 .toObject()
                                                 .value("payload"_L1)
                                                 .toString()
                                                 .toUtf8();
            const QByteArray answer = valuejson::toBytes(content.value("answer"_L1));
            shown.append({sent, XmlPane(request, u"request-%1"_s.arg(number)),
                          XmlPane(answer, u"answer-%1"_s.arg(number))});
        }
    }

    QByteArray write();

private:
    void writeAbout();
    void writeCalls();
    void writeExchanges();
    void writeQueue();
    void writeReplay();
    void writeSide(const QString& title, const XmlPane& pane);

    const CaseMaterial& material;
    ReportPage page;
    QList<ShownExchange> shown;
    ShownDocuments documents;
};

QByteArray CaseWriter::write()
{
    // the amounts of the slip point into the exchanges' documents: those are not moved any more
    for (ShownExchange& exchange : shown) {
        const QByteArray answer = valuejson::toBytes(exchange.sent.content().value("answer"_L1));
        if (exchange.sent.isExchange() && !answer.isEmpty() &&
            answer == material.explanation.exchange.answer) {
            documents.answer = &exchange.answer;
        }
        if (!exchange.sent.isExchange()) {
            documents.confirmation = &exchange.request;
        }
    }
    writeAbout();
    if (material.check) {
        writeSlipSection(page, *material.check, material.explanation, documents);
    }
    if (!material.unexplained.isEmpty()) {
        page.element(u"p"_s, material.unexplained, u"quiet"_s);
    }
    writeCalls();
    writeExchanges();
    writeQueue();
    writeReplay();
    return page.finish();
}

void CaseWriter::writeAbout()
{
    const QJsonObject& header = material.record.header;
    const ReportPage::Element table(page, u"table"_s);
    const auto row = [this](const QString& name, const QString& value) {
        const ReportPage::Element line(page, u"tr"_s);
        {
            const ReportPage::Element cell(page, u"th"_s);
            page.attribute(u"scope"_s, u"row"_s);
            page.text(name);
        }
        page.element(u"td"_s, value);
    };
    row(Text::tr("Check"), material.record.checkId());
    row(Text::tr("Record"),
        Text::tr("%1 of %2").arg(material.record.number()).arg(timeOf(header.value("started"_L1))));
    row(Text::tr("Plug-in"),
        Text::tr("%1 (build %2)")
            .arg(header.value("plugin"_L1).toString(), header.value("pluginBuild"_L1).toString()));
    row(Text::tr("Program"), header.value("program"_L1).toString());
    if (material.record.cut) {
        row(Text::tr("Record"), Text::tr("The record was cut off."));
    }
}

void CaseWriter::writeCalls()
{
    page.element(u"h2"_s, Text::tr("What happened when"));
    QList<Duration> durations;
    const ReportPage::Element frame(page, u"div"_s, u"scroll"_s);
    {
        const ReportPage::Element table(page, u"table"_s);
        page.row(u"th"_s, {Text::tr("Time"), Text::tr("What"), Text::tr("Outcome"), Text::tr("ms")},
                 3);
        for (const QJsonObject& call : material.record.calls) {
            const QString name = call.value("call"_L1).toString();
            durations.append({name, call.value("milliseconds"_L1).toDouble(), false});
            page.row(u"td"_s,
                     {timeOf(call.value("at"_L1)), name,
                      call.contains("thrown"_L1) ? Text::tr("throws") : QString(),
                      QString::number(durations.last().milliseconds, 'f', 1)},
                     3);
            Record one;
            one.calls = {call};
            const QList<Sent> all = logview::sentIn(one);
            for (const Sent& sent : all) {
                const QString what = sent.isExchange()
                                         ? u"POST "_s + sent.content().value("url"_L1).toString()
                                         : Text::tr("message into the queue");
                const double time = sent.content().value("milliseconds"_L1).toDouble();
                if (sent.isExchange()) {
                    durations.append(
                        {u"POST "_s + sent.content().value("url"_L1).toString().section(u'/', -2),
                         time, true});
                }
                page.row(u"td"_s,
                         {QString(), what, sent.outcome(),
                          sent.isExchange() ? QString::number(time, 'f', 1) : QString()},
                         3);
            }
        }
    }
    writeDurationChart(page, Text::tr("How long each call took, and the requests in it"),
                       durations);
}

void CaseWriter::writeSide(const QString& title, const XmlPane& pane)
{
    const ReportPage::Element side(page, u"section"_s);
    page.element(u"h3"_s, title);
    pane.write(page);
}

void CaseWriter::writeExchanges()
{
    page.element(u"h2"_s, Text::tr("Requests and answers"));
    int number = 0;
    for (const ShownExchange& exchange : shown) {
        ++number;
        const QJsonObject content = exchange.sent.content();
        const ReportPage::Element details(page, u"details"_s);
        page.attribute(u"open"_s, u"open"_s);
        if (!exchange.sent.isExchange()) {
            page.element(
                u"summary"_s,
                Text::tr("Message %1 into the queue: %2").arg(number).arg(exchange.sent.outcome()));
            writeSide(Text::tr("Confirmation"), exchange.request);
            continue;
        }
        page.element(u"summary"_s,
                     Text::tr("Exchange %1: POST %2: %3")
                         .arg(number)
                         .arg(content.value("url"_L1).toString(), exchange.sent.outcome()));
        const ReportPage::Element pair(page, u"div"_s, u"pair"_s);
        writeSide(Text::tr("Request"), exchange.request);
        writeSide(Text::tr("Answer"), exchange.answer);
    }
    if (shown.isEmpty()) {
        page.element(u"p"_s, Text::tr("Nothing was sent."), u"quiet"_s);
    }
}

void CaseWriter::writeQueue()
{
    page.element(u"h2"_s, Text::tr("What the queue did"));
    if (!material.message) {
        page.element(u"p"_s, Text::tr("The queue has no message of this check, or not any more."),
                     u"quiet"_s);
        return;
    }
    const poshost::QueueEntry& entry = material.message->entry;
    const QString format = u"yyyy-MM-dd HH:mm:ss"_s;
    page.element(
        u"p"_s,
        entry.deliveredAt.isValid()
            ? Text::tr("Message %1, stored %2, delivered %3, requests: %4.")
                  .arg(entry.id)
                  .arg(entry.createdAt.toString(format), entry.deliveredAt.toString(format))
                  .arg(entry.attempts)
            : Text::tr("Message %1, stored %2, not delivered, steps done: %3 of %4, requests: %5.")
                  .arg(entry.id)
                  .arg(entry.createdAt.toString(format))
                  .arg(entry.stepsDone)
                  .arg(entry.steps)
                  .arg(entry.attempts),
        entry.deliveredAt.isValid() ? QString() : u"wrong"_s);
    if (!entry.lastError.isEmpty()) {
        page.element(u"p"_s, entry.lastError);
    }
    if (!material.message->lastAnswer.isEmpty()) {
        const ReportPage::Element answer(page, u"pre"_s);
        page.lines(material.message->lastAnswer);
    }
}

void CaseWriter::writeReplay()
{
    page.element(u"h2"_s, Text::tr("What a replay does differently"));
    if (!material.notReplayed.isEmpty()) {
        page.element(u"p"_s, material.notReplayed, u"quiet"_s);
        return;
    }
    if (material.differences.isEmpty()) {
        page.element(u"p"_s, Text::tr("Nothing: %n calls, identical.", nullptr,
                                      int(material.record.calls.size())));
        return;
    }
    const ReportPage::Element frame(page, u"div"_s, u"scroll"_s);
    const ReportPage::Element table(page, u"table"_s);
    page.row(u"th"_s,
             {Text::tr("Call"), Text::tr("Where"), Text::tr("Recorded"), Text::tr("Replayed")});
    for (const RecordDifference& one : material.differences) {
        page.row(u"td"_s,
                 {u"%1. %2"_s.arg(one.call).arg(one.name), one.path, one.recorded, one.replayed});
    }
}

} // namespace

bool casereport::isOne(const QByteArray& content)
{
    constexpr qsizetype head = 1024;
    return content.startsWith("<!DOCTYPE html>") &&
           content.first(std::min(content.size(), head))
               .contains("\"generator\" content=\"" + QByteArray(ReportPage::generator) + '"');
}

QByteArray casereport::html(const CaseMaterial& material,
                            const std::function<QString(const QString&)>& mask,
                            const QString& language)
{
    return CaseWriter(material, mask, language).write();
}

} // namespace till

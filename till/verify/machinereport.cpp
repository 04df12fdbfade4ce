// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a run has found, for programs: the same words in every language.

#include "till/verify/report.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

namespace till::verify::report {
namespace {

QJsonObject complaintJson(const Complaint& complaint)
{
    return {{u"path"_s, complaint.path},
            {u"expected"_s, complaint.expected},
            {u"got"_s, complaint.got},
            {u"url"_s, complaint.exchange.url.toString(QUrl::RemoveUserInfo)},
            {u"request"_s, QString::fromUtf8(complaint.exchange.request)},
            {u"status"_s, complaint.exchange.reply.status},
            {u"trouble"_s, complaint.exchange.reply.trouble},
            {u"answer"_s, QString::fromUtf8(complaint.exchange.reply.body)}};
}

QJsonObject outcomeJson(const Outcome& outcome)
{
    QJsonObject object{{u"name"_s, outcome.name},
                       {u"state"_s, nameOf(outcome.state)},
                       {u"milliseconds"_s, outcome.milliseconds}};
    if (outcome.state == State::Broken) {
        object.insert(u"complaint"_s, complaintJson(outcome.complaint));
    } else if (outcome.state == State::NotTried) {
        object.insert(u"reason"_s, outcome.reason);
    }
    return object;
}

QJsonObject timesJson(const Times& times)
{
    QJsonArray histogram;
    const QList<int> counts = times.histogram();
    for (qsizetype i = 0; i < counts.size(); ++i) {
        const QJsonValue limit =
            i < Times::limits().size() ? QJsonValue(Times::limits().at(i)) : QJsonValue();
        histogram.append(QJsonObject{{u"upToMilliseconds"_s, limit}, {u"count"_s, counts.at(i)}});
    }
    return {{u"answers"_s, times.answers.size()},
            {u"median"_s, times.share(50)},
            {u"percentile95"_s, times.share(95)},
            {u"longest"_s, times.share(100)},
            {u"histogram"_s, histogram}};
}

/// The sentence of a complaint on one line.
QString inShort(const Complaint& complaint)
{
    const QString path = complaint.path.isEmpty() ? QString() : complaint.path + u": "_s;
    return (path + u"expected "_s + complaint.expected + u", got "_s + complaint.got).simplified();
}

void writeCase(QXmlStreamWriter& xml, const Outcome& outcome, const Requirement& requirement,
               bool strict)
{
    xml.writeStartElement(u"testcase"_s);
    xml.writeAttribute(u"classname"_s, outcome.requirement);
    xml.writeAttribute(u"name"_s, outcome.name);
    xml.writeAttribute(u"time"_s, QString::number(double(outcome.milliseconds) / 1000, 'f', 3));
    const bool fails = strict || requirement.isMust;
    if (outcome.state == State::Broken && fails) {
        xml.writeStartElement(u"failure"_s);
        xml.writeAttribute(u"message"_s, inShort(outcome.complaint));
        xml.writeCharacters(
            requirement.sentence + u'\n' +
            QString::fromUtf8(
                QJsonDocument(complaintJson(outcome.complaint)).toJson(QJsonDocument::Indented)));
        xml.writeEndElement();
    } else if (outcome.state != State::Held) {
        xml.writeStartElement(u"skipped"_s);
        xml.writeAttribute(u"message"_s, outcome.state == State::NotTried
                                             ? outcome.reason
                                             : u"should: "_s + inShort(outcome.complaint));
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

} // namespace

QString json(const Results& results, bool strict)
{
    QJsonArray requirements;
    for (const Verdict& verdict : results.verdicts()) {
        QJsonArray cases;
        for (const Outcome& outcome : verdict.outcomes) {
            cases.append(outcomeJson(outcome));
        }
        QJsonObject object{{u"name"_s, verdict.requirement.name},
                           {u"level"_s, verdict.requirement.isMust ? u"must"_s : u"should"_s},
                           {u"sentence"_s, verdict.requirement.sentence},
                           {u"state"_s, nameOf(verdict.state)},
                           {u"cases"_s, cases}};
        if (verdict.state == State::NotTried) {
            object.insert(u"reason"_s, verdict.reason);
        }
        requirements.append(object);
    }
    const QJsonObject all{{u"server"_s, results.server},
                          {u"seed"_s, qint64(results.seed)},
                          {u"good"_s, results.isGood(strict)},
                          {u"broken"_s, QJsonArray::fromStringList(results.broken())},
                          {u"requirements"_s, requirements},
                          {u"times"_s, timesJson(results.times)},
                          {u"leftBehind"_s, QJsonArray::fromStringList(results.left)}};
    return QString::fromUtf8(QJsonDocument(all).toJson());
}

QByteArray junit(const Results& results, bool strict)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(u"testsuites"_s);
    for (const Verdict& verdict : results.verdicts()) {
        xml.writeStartElement(u"testsuite"_s);
        xml.writeAttribute(u"name"_s, verdict.requirement.name);
        xml.writeAttribute(u"tests"_s, QString::number(verdict.outcomes.size()));
        for (const Outcome& outcome : verdict.outcomes) {
            writeCase(xml, outcome, verdict.requirement, strict);
        }
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return bytes;
}

QString tap(const Results& results, bool strict)
{
    QString text = u"TAP version 13\n1..%1\n"_s.arg(results.outcomes.size());
    int number = 0;
    for (const Outcome& outcome : results.outcomes) {
        const bool isBroken = outcome.state == State::Broken;
        const bool fails = isBroken && (strict || Requirement::named(outcome.requirement).isMust);
        text +=
            u"%1 %2 - %3"_s.arg(isBroken ? u"not ok"_s : u"ok"_s).arg(++number).arg(outcome.name);
        if (outcome.state == State::NotTried) {
            text += u" # SKIP "_s + outcome.reason.simplified();
        } else if (isBroken && !fails) {
            text += u" # TODO should"_s;
        }
        text += u'\n';
        if (isBroken) {
            text += u"# "_s + outcome.requirement + u": "_s + inShort(outcome.complaint) + u'\n';
        }
    }
    return text;
}

} // namespace till::verify::report

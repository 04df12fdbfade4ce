// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Bodies that are not the document in UTF-8 that they should be.

#include "simulator/deviations/deviation.h"
#include "simulator/deviations/gzip.h"
#include "simulator/documents/endpoints.h"
#include "simulator/documents/requestfacts.h"
#include "simulator/documents/windows1251.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// Whether it is the answer to a pre-check that was done.
bool hasAnswer(const Request& request, const Answer& answer)
{
    return endpointOf(request) == endpoints::precheck && answer.status == 200;
}

void replaceBody(const Request& request, Answer& answer, const QByteArray& type,
                 const QByteArray& body)
{
    if (hasAnswer(request, answer)) {
        answer.contentType = type;
        answer.body = body;
    }
}

const Deviation bodyRows[] = {
    {"html-page", "status-tells",
     QT_TRANSLATE_NOOP("Simulator", "a pre-check is answered 200 with a page for people"),
     [](const Request& request, Answer& answer) {
         replaceBody(
             request, answer, "text/html; charset=utf-8",
             "<!DOCTYPE html><html><body><h1>It works!</h1><p>Back soon.<br></body></html>");
     }},
    {"empty-answer", "status-tells",
     QT_TRANSLATE_NOOP("Simulator", "a pre-check is answered 200 without a body"),
     [](const Request& request, Answer& answer) { replaceBody(request, answer, {}, {}); }, blind},
    {"json-answer", "status-tells",
     QT_TRANSLATE_NOOP("Simulator", "a pre-check is answered in JSON"),
     [](const Request& request, Answer& answer) {
         replaceBody(request, answer, "application/json", "{\"RawCheck\": {\"items\": []}}");
     },
     blind},
    {"refusals-in-200", "status-tells",
     QT_TRANSLATE_NOOP("Simulator", "refusals are answered 200 with an error in the body"),
     [](const Request&, Answer& answer) {
         if (answer.status == 424) {
             answer.status = 200;
             answer.contentType = "application/xml; charset=utf-8";
             answer.body = "<RawCheck><error>" + answer.body.trimmed() + "</error></RawCheck>\n";
         }
     }},
    {"line-before-declaration", "answer-fits-schema",
     QT_TRANSLATE_NOOP("Simulator", "an empty line stands before the XML declaration"),
     [](const Request& request, Answer& answer) {
         if (hasAnswer(request, answer)) {
             answer.body = "\r\n<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + answer.body;
         }
     },
     blind},
    {"encoding-declared-wrong", "answer-encoding",
     QT_TRANSLATE_NOOP("Simulator", "an answer is in UTF-8 and declares windows-1251"),
     [](const Request& request, Answer& answer) {
         if (hasAnswer(request, answer)) {
             answer.body = "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n" + answer.body;
         }
     }},
    {"encoding-undeclared", "answer-encoding",
     QT_TRANSLATE_NOOP("Simulator", "an answer is in windows-1251 and does not say so"),
     [](const Request& request, Answer& answer) {
         if (hasAnswer(request, answer)) {
             answer.body = inWindows1251(answer.body);
         }
     }},
    {"document-type", "answer-limits",
     QT_TRANSLATE_NOOP("Simulator", "an answer brings a document type with declarations"),
     [](const Request& request, Answer& answer) {
         if (hasAnswer(request, answer)) {
             answer.body = "<!DOCTYPE RawCheck [<!ENTITY shop \"3\">]>\n" + answer.body;
         }
     },
     blind},
    {"gzip-unasked", "answer-whole",
     QT_TRANSLATE_NOOP("Simulator", "answers are compressed though nobody asked for it"),
     [](const Request&, Answer& answer) {
         answer.body = gzipped(answer.body);
         answer.headers.append("Content-Encoding: gzip");
     }},
    {"length-in-characters", "answer-whole",
     QT_TRANSLATE_NOOP("Simulator", "the length of an answer counts characters, not bytes"),
     [](const Request&, Answer& answer) {
         answer.announced = QString::fromUtf8(answer.body).size();
     },
     blind},
    {"large-answers-cut", "many-lines",
     QT_TRANSLATE_NOOP("Simulator", "an answer of more than 64 KiB is cut in the middle"),
     [](const Request&, Answer& answer) {
         if (answer.body.size() > qsizetype(64 * 1024)) {
             answer.fault.emplace().kind = FaultKind::CutBody;
         }
     }},
    {"refusals-without-words", "refusal-says-why",
     QT_TRANSLATE_NOOP("Simulator", "refusals have no body"),
     [](const Request&, Answer& answer) {
         if (answer.status >= 400) {
             answer.body.clear();
         }
     }},
    {"refusals-name-the-card", "refusal-says-why",
     QT_TRANSLATE_NOOP("Simulator", "refusals have the whole number of the card"),
     [](const Request&, Answer& answer) {
         if (answer.status >= 400 && !answer.cardNumber.isEmpty()) {
             answer.body = "Card " + answer.cardNumber.toUtf8() + ": " + answer.body;
         }
     },
     blind},
    {"acknowledged-empty", "acknowledged",
     QT_TRANSLATE_NOOP("Simulator", "confirmations are answered 200 without a body"),
     [](const Request& request, Answer& answer) {
         if (endpointOf(request) != endpoints::precheck && answer.status == 200) {
             answer.body.clear();
         }
     }},
};

} // namespace

std::span<const Deviation> bodyDeviations()
{
    return bodyRows;
}

} // namespace simulator

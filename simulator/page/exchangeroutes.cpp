// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/exchangeroutes.h"

#include "simulator/documents/endpoints.h"
#include "simulator/documents/rejection.h"
#include "simulator/documents/requestforms.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/page/exchangebook.h"
#include "simulator/service.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr qint64 usualRows = 1000;
constexpr qint64 mostRows = 10'000;
/// As many exchanges one request looks into for a text; the next goes on from there.
constexpr qint64 mostSearched = 5000;
/// As many things that are wrong with a request its reader can do with.
constexpr qsizetype mostFindings = 100;

QJsonObject findingOf(const QString& sentence)
{
    qsizetype end = 0; // the path ends before a blank or a colon
    while (end < sentence.size() && sentence[end] != u' ' && sentence[end] != u':') {
        ++end;
    }
    return {{u"path"_s, sentence.first(end)}, {u"sentence"_s, sentence}};
}

/// What the schemas object to in a request, whether or not the rules are strict.
QJsonArray findingsIn(const QJsonObject& row, const QByteArray& request)
{
    const QString operation = row[u"operation"_s].toString();
    if (!endpoints::all().contains(operation) || request.isEmpty()) {
        return {};
    }
    QJsonArray findings;
    try {
        const Document document = readXml(request);
        for (const QString& sentence :
             requestObjections(document.root(), operation, mostFindings)) {
            findings.append(findingOf(sentence));
        }
    } catch (const Rejection& rejection) {
        findings.append(QJsonObject{{u"path"_s, QString()}, {u"sentence"_s, rejection.reason}});
    }
    return findings;
}

/// The number of the last pre-check of the same check before an exchange; 0 for none.
qint64 earlierPrecheck(const ExchangeBook& book, qint64 number, const QJsonObject& row)
{
    constexpr qint64 lookedBack = 5000;
    const QString check = row[u"check"_s].toString();
    if (check.isEmpty()) {
        return 0;
    }
    const qint64 from = std::max<qint64>(0, number - 1 - lookedBack);
    const QByteArrayList rows = book.rows(from, number - 1 - from);
    for (qsizetype i = rows.size() - 1; i >= 0; --i) {
        const QJsonObject other = QJsonDocument::fromJson(rows[i]).object();
        if (other[u"check"_s].toString() == check &&
            other[u"operation"_s].toString() == endpoints::precheck) {
            return other[u"number"_s].toInteger();
        }
    }
    return 0;
}

ExchangeBook::Entry entryOf(const ExchangeBook& book, const AdminCall& call)
{
    bool isNumber = false;
    const qint64 number = call.part.toLongLong(&isNumber);
    std::optional<ExchangeBook::Entry> entry = isNumber ? book.read(number) : std::nullopt;
    if (!entry) {
        throw Rejection(404, u"There is no exchange with this number, or not any more"_s);
    }
    return *std::move(entry);
}

Answer oneExchange(const ExchangeBook& book, const AdminCall& call)
{
    const ExchangeBook::Entry entry = entryOf(book, call);
    QJsonObject object = QJsonDocument::fromJson(entry.row).object();
    object.insert(u"earlierPrecheck"_s,
                  earlierPrecheck(book, object[u"number"_s].toInteger(), object));
    object.insert(u"findings"_s, findingsIn(object, entry.request));
    object.insert(u"request"_s, QString::fromUtf8(entry.request));
    object.insert(u"answer"_s, QString::fromUtf8(entry.answer));
    return jsonAnswer(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

/// Whether an exchange holds a text in what its row says or in a body, in capitals or not.
bool holds(const ExchangeBook::Entry& entry, const QString& text)
{
    const QJsonObject row = QJsonDocument::fromJson(entry.row).object();
    const bool isInRow = std::any_of(row.begin(), row.end(), [&](const QJsonValue& value) {
        return value.toString().contains(text, Qt::CaseInsensitive);
    });
    return isInRow || QString::fromUtf8(entry.request).contains(text, Qt::CaseInsensitive) ||
           QString::fromUtf8(entry.answer).contains(text, Qt::CaseInsensitive);
}

/// The rows of those behind a number that hold a text; the number is moved to where it has looked.
QByteArrayList found(const ExchangeBook& book, qint64& after, qint64 last, const QString& text)
{
    QByteArrayList rows;
    const qint64 end = std::min(last, after + mostSearched);
    while (after < end) {
        const std::optional<ExchangeBook::Entry> entry = book.read(++after);
        if (entry && holds(*entry, text)) {
            rows.append(entry->row);
        }
    }
    return rows;
}

/// A list of rows and where the next request goes on.
Answer listedExchanges(const ExchangeBook& book, const AdminCall& call)
{
    const ExchangeBook::Span span = book.span();
    const qint64 most = std::min(call.number(u"most"_s, usualRows), mostRows);
    const QString text = call.argument(u"text"_s);
    qint64 next = std::max(call.number(u"after"_s, 0), span.first - 1);
    QByteArrayList rows;
    if (text.isEmpty()) {
        // those that have come since the span was read are left to the next request
        const qint64 end = std::max(next, std::min(span.last, next + most));
        rows = book.rows(next, end - next);
        next = end;
    } else {
        rows = found(book, next, span.last, text);
    }
    return jsonAnswer("{\"first\":" + QByteArray::number(span.first) + ",\"last\":" +
                      QByteArray::number(span.last) + ",\"next\":" + QByteArray::number(next) +
                      ",\"exchanges\":[" + rows.join(',') + "]}");
}

Answer sentAgain(const ExchangeBook& book, const Service& service, const Sender& send,
                 const AdminCall& call)
{
    const ExchangeBook::Entry entry = entryOf(book, call);
    const QJsonObject row = QJsonDocument::fromJson(entry.row).object();
    Request request{row[u"method"_s].toString().toUtf8(), row[u"path"_s].toString().toUtf8(),
                    service.authorization(), entry.request};
    request.contentType = row[u"requestType"_s].toString().toUtf8();
    request.began = std::chrono::steady_clock::now();
    const Answer answer = send(request);
    return jsonAnswer(
        QJsonDocument(QJsonObject{{u"status"_s, answer.status}, {u"reason"_s, answer.reason}})
            .toJson(QJsonDocument::Compact));
}

} // namespace

std::vector<AdminRoute> exchangeRoutes(ExchangeBook& book, Service& service, Sender send)
{
    return {{"GET", "/exchanges",
             [&book](const AdminCall& call) { return listedExchanges(book, call); }},
            {"GET", "/exchanges/{number}",
             [&book](const AdminCall& call) { return oneExchange(book, call); }},
            {"POST", "/exchanges/{number}/send",
             [&book, &service, send = std::move(send)](const AdminCall& call) {
                 return sentAgain(book, service, send, call);
             }}};
}

} // namespace simulator

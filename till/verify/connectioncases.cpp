// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The way to the server: addresses, connections, forms of a body, time.

#include "till/text.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"
#include "till/verify/gzip.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

constexpr int togetherConnections = 16;
constexpr int slowestMilliseconds = 5000;
constexpr int slowPieces = 9;
constexpr int slowPause = 1150; // with the pieces a little more than 10 seconds

/// What a request in another coding may be answered: understood, or refused as such.
void expectReadOrRefused(Bench& bench, const Reply& reply, const QString& id)
{
    bench.expectStatus(reply, {200, 411, 415, 501});
    if (reply.status == 200) {
        bench.expectText(u"/RawCheck/id"_s, id, Reading(reply.body).text({names::id}));
    }
}

void isReadOrRefused(Bench& bench, const QByteArray& coding,
                     QByteArray (*packed)(const QByteArray&))
{
    const Draft draft = bench.freshRequest();
    const Outgoing request = bench.outgoing(bench.ways().precheck, packed(draft.bytes()))
                                 .with("Content-Encoding", coding);
    expectReadOrRefused(bench, bench.send(request), draft.text({names::id}));
}

void answersAt(Bench& bench, const QUrl& url, const QByteArray& body)
{
    const Reply reply = bench.send(bench.outgoing(url, body));
    bench.expectThat(reply.status != 0, {}, Text::tr("an answer"), reply.shown());
    const bool isElsewhere = reply.status >= 300 && reply.status < 400;
    bench.expectThat(!isElsewhere && reply.status != 404 && reply.status != 405, {},
                     Text::tr("an answer of this address itself"), reply.shown());
}

void isUncoded(Bench& bench, const Reply& reply)
{
    bench.expectThat(reply.status != 0, {}, Text::tr("a whole answer"), reply.shown());
    const QByteArray coding = reply.header("Content-Encoding");
    bench.expectThat(coding.isEmpty() || coding == "identity", u"Content-Encoding"_s,
                     Text::tr("not compressed"), QString::fromLatin1(coding));
}

void isWhole(Bench& bench)
{
    const Reply reply = bench.precheck(bench.freshRequest().bytes());
    isUncoded(bench, reply);
    const QByteArray body = reply.body.trimmed();
    bench.expectThat(!body.contains("<RawCheck>") || body.endsWith("</RawCheck>"), {},
                     u"</RawCheck>"_s, QString::fromUtf8(body.right(20)));
}

/// Whether it is one that can be read is asked elsewhere.
void isARightAnswer(Bench& bench)
{
    const Reply reply = bench.precheck(bench.freshRequest().bytes());
    bench.expectStatus(reply, {200});
    bench.expectThat(reply.body.contains("<RawCheck"), u"/RawCheck"_s, u"<RawCheck>"_s,
                     QString::fromUtf8(reply.body.left(60)).simplified());
}

void refusesWithAStatus(Bench& bench)
{
    const Reply reply = bench.precheck("<RawCheck><id>");
    bench.expectThat(reply.status == 0 || reply.status >= 400, {}, u"400"_s, reply.shown());
}

void oldVersionsAreRefused(Bench& bench)
{
    if (!bench.wire().isEncrypted()) {
        Bench::cannot(Text::tr("the address is not one of https"));
    }
    const Handshake old = bench.wire().shakeHands(Wire::Versions::Old);
    bench.expectThat(!old.succeeded, {}, u"TLS 1.2"_s, u"TLS 1.1"_s);
}

void certificateIsTrusted(Bench& bench)
{
    if (!bench.wire().isEncrypted()) {
        Bench::cannot(Text::tr("the address is not one of https"));
    }
    const Handshake now = bench.wire().shakeHands(Wire::Versions::Usual);
    bench.expectThat(now.succeeded, {}, Text::tr("a trusted connection"), now.trouble);
}

void dateIsRight(Bench& bench)
{
    const Reply reply = bench.precheck(bench.freshRequest().bytes());
    const QDateTime date = reply.dateIn("Date");
    const QDateTime now = QDateTime::currentDateTimeUtc();
    bench.expectThat(date.isValid() && std::abs(date.secsTo(now)) <= 60, u"Date"_s,
                     now.toString(Qt::RFC2822Date), QString::fromLatin1(reply.header("Date")));
}

void connectionIsKept(Bench& bench)
{
    const QList<Reply> replies =
        bench.sendKept({bench.outgoing(bench.ways().precheck, bench.freshRequest().bytes()),
                        bench.outgoing(bench.ways().precheck, bench.freshRequest().bytes())});
    const bool closes =
        replies.first().header("Connection").compare("close", Qt::CaseInsensitive) == 0;
    bench.expectThat(replies.last().status != 0, {}, Text::tr("an answer"), replies.last().shown());
    bench.expectThat(closes || replies.last().connections == 0, u"Connection"_s, u"close"_s,
                     Text::tr("a connection that is closed without a word"));
}

void manyAtOnce(Bench& bench)
{
    QList<Outgoing> requests;
    QStringList ids;
    for (int i = 0; i < togetherConnections; ++i) {
        const Draft draft = bench.freshRequest();
        ids.append(draft.text({names::id}));
        requests.append(bench.outgoing(bench.ways().precheck, draft.bytes()));
    }
    const QList<Reply> replies = bench.sendTogether(requests);
    for (qsizetype i = 0; i < replies.size(); ++i) {
        bench.lookAt({requests.at(i).url, requests.at(i).body, replies.at(i)});
        bench.expectStatus(replies.at(i), {200});
        bench.expectText(u"/RawCheck/id"_s, ids.at(i),
                         Reading(replies.at(i).body).text({names::id}));
    }
}

void slowlySent(Bench& bench)
{
    Outgoing request = bench.outgoing(bench.ways().precheck, bench.freshRequest().bytes());
    request.pieces = slowPieces;
    request.pauseMilliseconds = slowPause;
    bench.expectStatus(bench.send(request), {200});
}

void hundredLinesInTime(Bench& bench)
{
    const Reply reply = bench.precheck(bench.freshRequest().makeLines(100).bytes());
    bench.expectThat(reply.status != 0 && reply.milliseconds <= slowestMilliseconds, {},
                     u"%1 ms"_s.arg(slowestMilliseconds), u"%1 ms"_s.arg(reply.milliseconds));
}

const Case rows[] = {
    {"addresses.precheck", "addresses",
     [](Bench& bench) { answersAt(bench, bench.ways().precheck, bench.freshRequest().bytes()); }},
    {"addresses.payment-try", "addresses",
     [](Bench& bench) { answersAt(bench, bench.ways().paymentTry, bench.freshRequest().bytes()); }},
    {"addresses.confirmation", "addresses",
     [](Bench& bench) { answersAt(bench, bench.ways().confirm, bench.freshRequest().bytes()); }},
    {"tls.certificate", "tls", certificateIsTrusted},
    {"tls.no-older-version", "tls", oldVersionsAreRefused},
    {"answer-whole.length", "answer-whole", isWhole},
    {"answer-whole.compression-offered", "answer-whole",
     [](Bench& bench) {
         isUncoded(bench,
                   bench.send(bench.outgoing(bench.ways().precheck, bench.freshRequest().bytes())
                                  .with("Accept-Encoding", "gzip, deflate")));
     }},
    {"status-tells.precheck", "status-tells", isARightAnswer},
    {"status-tells.refusal", "status-tells", refusesWithAStatus},
};

const Case laterRows[] = {
    {"keep-alive.second-request", "keep-alive", connectionIsKept},
    {"request-codings.chunks", "request-codings",
     [](Bench& bench) {
         const Draft draft = bench.freshRequest();
         Outgoing request = bench.outgoing(bench.ways().precheck, draft.bytes());
         request.inChunks = true;
         request.pieces = 3;
         expectReadOrRefused(bench, bench.send(request), draft.text({names::id}));
     }},
    {"request-codings.gzip", "request-codings",
     [](Bench& bench) { isReadOrRefused(bench, "gzip", gzipped); }},
    {"request-codings.deflate", "request-codings",
     [](Bench& bench) {
         // before what zlib makes Qt writes its length
         isReadOrRefused(bench, "deflate",
                         [](const QByteArray& body) { return qCompress(body).sliced(4); });
     }},
    {"slow-request.ten-seconds", "slow-request", slowlySent},
    {"parallel-requests.sixteen", "parallel-requests", manyAtOnce},
    {"date-header.clock", "date-header", dateIsRight},
    {"in-time.hundred-lines", "in-time", hundredLinesInTime},
};

} // namespace

std::span<const Case> connectionCases()
{
    return rows;
}

std::span<const Case> transportCases()
{
    return laterRows;
}

} // namespace till::verify

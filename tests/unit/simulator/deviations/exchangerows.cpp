// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Bodies, headers, times and connections.

#include "simulator/http/response.h"
#include "tests/unit/simulator/deviations/deviantserver.h"
#include "tests/unit/simulator/servicefixture.h"

#include <QLocale>
#include <QTimeZone>

#include <thread>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

/// The status of a pre-check and how its body begins.
Scene beginning(qsizetype characters)
{
    return [characters](DeviantServer& server) {
        const Answer answer = server.precheck(saleOfTwo(u"s"_s));
        return said(answer) + u' ' + QString::fromUtf8(answer.body.left(characters)).simplified();
    };
}

/// The surname as whoever takes the body for UTF-8 reads it.
QString surname(DeviantServer& server)
{
    const QString body = QString::fromUtf8(server.precheck(saleOfTwo(u"s"_s)).body);
    return body.section(u"<surname>"_s, 1).section(u"</surname>"_s, 0, 0);
}

TextCheck ofUnknownCard()
{
    TextCheck check = saleOfTwo(u"s"_s);
    check.card = u"2200000000099"_s;
    return check;
}

/// A refusal of an unknown card.
QString refused(DeviantServer& server)
{
    const Answer answer = server.precheck(ofUnknownCard());
    return said(answer) + u' ' + QString::fromUtf8(answer.body).simplified();
}

QString head(DeviantServer& server)
{
    return QString::fromLatin1(
        responseFor(server.precheck(saleOfTwo(u"s"_s)), "POST", false).opening);
}

/// How far the Date header is from the clock, in whole minutes.
QString minutesLate(DeviantServer& server)
{
    const QString header = head(server).section(u"\r\nDate: "_s, 1).section(u"\r\n"_s, 0, 0);
    QDateTime date = QLocale::c().toDateTime(header, u"ddd, dd MMM yyyy hh:mm:ss 'GMT'"_s);
    date.setTimeZone(QTimeZone::utc());
    return date.isValid()
               ? QString::number((date.secsTo(QDateTime::currentDateTimeUtc()) + 30) / 60)
               : u"no date"_s;
}

/// What goes wrong with the first and the second answer for a card, as the log says it.
QString faults(DeviantServer& server)
{
    QStringList names;
    for (const char* id : {"a", "b"}) {
        const Answer answer = server.precheck(saleOfTwo(QString::fromLatin1(id)));
        names.append(answer.fault ? answer.fault->name() : u"none"_s);
    }
    return names.join(u' ');
}

/// What twenty requests are answered, each status once.
QString twenty(DeviantServer& server)
{
    QStringList statuses;
    for (int i = 0; i < 20; ++i) {
        const Answer answer = server.precheck(saleOfTwo(u"s"_s));
        statuses.append(said(answer) + (answer.headers.isEmpty() ? u""_s : u" with a header"_s));
    }
    statuses.removeDuplicates();
    return statuses.join(u' ');
}

/// How many of four requests for a card at the same time are answered 200.
QString atOnce(DeviantServer& server)
{
    std::atomic<int> done = 0;
    {
        std::vector<std::jthread> tills;
        for (int i = 0; i < 4; ++i) {
            tills.emplace_back([&, i] {
                done += server.precheck(saleOfTwo(QString::number(i))).status == 200 ? 1 : 0;
            });
        }
    }
    return done == 4 ? u"all"_s : u"not all"_s;
}

Answer large(DeviantServer& server)
{
    TextCheck check = saleOfTwo(u"s"_s);
    for (int i = 3; i < 400; ++i) {
        check.lines.push_back({QString::number(i), u"1000"_s, u"1.000"_s, u"0.00"_s});
    }
    return server.precheck(check);
}

std::vector<DeviationRow> bodyRows()
{
    const Scene start = beginning(20);
    const QString sound = u"200 <RawCheck> <id>s</i"_s;
    return {
        {"html-page", start, sound, u"200 <!DOCTYPE html><html"_s},
        {"empty-answer", start, sound, u"200 "_s},
        {"json-answer", start, sound, u"200 {\"RawCheck\": {\"items"_s},
        {"refusals-in-200", refused, u"424 The card *0099 is unknown"_s,
         u"200 <RawCheck><error>The card *0099 is unknown</error></RawCheck>"_s},
        {"line-before-declaration",
         [](DeviantServer& server) {
             return QString::fromLatin1(server.precheck(saleOfTwo(u"s"_s)).body.left(4).toHex());
         },
         u"3c526177"_s, u"0d0a3c3f"_s},
        {"encoding-declared-wrong", beginning(44),
         u"200 <RawCheck> <id>s</id> <number>117</number>"_s,
         u"200 <?xml version=\"1.0\" encoding=\"windows-1251\"?"_s},
        {"encoding-undeclared", surname, u"Соколова"_s, QString(8, QChar::ReplacementCharacter)},
        {"document-type", start, sound, u"200 <!DOCTYPE RawCheck ["_s},
        {"gzip-unasked",
         [](DeviantServer& server) {
             const Answer answer = server.precheck(saleOfTwo(u"s"_s));
             return QString::fromLatin1(answer.body.left(3).toHex() + ' ' +
                                        answer.headers.join(','));
         },
         u"3c5261 "_s, u"1f8b08 Content-Encoding: gzip"_s},
        {"length-in-characters",
         [](DeviantServer& server) {
             const Answer answer = server.precheck(saleOfTwo(u"s"_s));
             return answer.announced.value_or(answer.body.size()) == answer.body.size()
                        ? u"all bytes"_s
                        : u"fewer"_s;
         },
         u"all bytes"_s, u"fewer"_s},
        {"large-answers-cut",
         [](DeviantServer& server) {
             const std::optional<Fault> fault = large(server).fault;
             return fault ? fault->name() : u"whole"_s;
         },
         u"whole"_s, u"cut-body"_s},
        {"refusals-without-words", refused, u"424 The card *0099 is unknown"_s, u"424 "_s},
        {"refusals-name-the-card", refused, u"424 The card *0099 is unknown"_s,
         u"424 Card 2200000000099: The card *0099 is unknown"_s},
        {"acknowledged-empty",
         [](DeviantServer& server) { return valueAt(server.sell(u"s"_s).body, u"id"_s); }, u"s"_s,
         u"(no XML)"_s},
    };
}

} // namespace

std::vector<DeviationRow> exchangeRows()
{
    std::vector<DeviationRow> rows = bodyRows();
    const std::vector<DeviationRow> more = {
        {"date-header-wrong", minutesLate, u"0"_s, u"60"_s},
        {"date-header-missing",
         [](DeviantServer& server) {
             return head(server).contains(u"\r\nDate: "_s) ? u"a date"_s : u"none"_s;
         },
         u"a date"_s, u"none"_s},
        {"date-header-of-its-own", minutesLate, u"0"_s, u"no date"_s},
        {"slow-body", faults, u"none none"_s, u"slow-drip none"_s},
        {"slow-answer", faults, u"none none"_s, u"delay none"_s},
        {"connection-closed-unsaid",
         [](DeviantServer& server) {
             return server.precheck(saleOfTwo(u"s"_s)).closesUnsaid ? u"closed"_s : u"open"_s;
         },
         u"open"_s, u"closed"_s},
        {"address-moved",
         [](DeviantServer& server) {
             const Answer answer = server.precheck(saleOfTwo(u"s"_s));
             return said(answer) + u' ' + QString::fromLatin1(answer.location);
         },
         u"200 "_s, u"308 /api/1.7/precheck"_s},
        {"too-many-without-a-time", twenty, u"200"_s, u"200 429"_s},
        {"too-many-as-forbidden", twenty, u"200"_s, u"200 403"_s},
        {"card-locked", atOnce, u"all"_s, u"not all"_s},
    };
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

} // namespace simulator::test

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/serverchecks.h"

#include "host/config/keysheet.h"
#include "host/config/knownkeys.h"
#include "host/http/serveraddress.h"
#include "till/doctor/keylines.h"
#include "till/doctor/pluginvisit.h"
#include "till/doctor/report.h"
#include "till/doctor/settingsfile.h"
#include "till/doctor/subject.h"
#include "till/text.h"

#include <QFileInfo>
#include <QLocale>
#include <QTimeZone>
#include <QUrl>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Use = poshost::ConfigKey::Use;

constexpr int success = 200;
constexpr int redirection = 300;
constexpr int unauthorised = 401;
constexpr int forbidden = 403;
constexpr int notFound = 404;
constexpr int notForPosts = 405;
constexpr int proxyUnauthorised = 407;
/// The service's own "already known" and "the data do not agree": only it answers so.
constexpr int conflict = 409;
constexpr int dataDisagree = 424;

constexpr qint64 warnSeconds = 60;
constexpr qint64 failSeconds = 300;

/// Without what it cannot do without, the plug-in would ask nothing, or not as itself.
QStringList neededToAsk()
{
    QStringList ids{u"plugin.ready"_s, u"address.scheme"_s, u"address.slash"_s,
                    u"road.connection"_s, u"tls.expiry"_s};
    for (const poshost::ConfigKey& key : poshost::knownkeys::of(poshost::keysheet::owner())) {
        if (key.isRequired) {
            ids.append(keylines::idOf(key));
        }
    }
    return ids;
}

Mend tellOperator(const Subject& subject)
{
    return Mend::words(
        Text::tr("ask whoever runs the loyalty server; %1 shows what is said on the way")
            .arg(subject.command({u"--verbose"_s, u"doctor"_s})));
}

bool isService(int status)
{
    return (status >= success && status < redirection) || status == conflict ||
           status == dataDisagree;
}

Finding lookAtAnswer(const std::optional<Exchange>& exchange, const Subject& subject)
{
    const Mend mend = tellOperator(subject);
    if (!exchange) {
        return Finding::fails(Text::tr("the question does not come to an end in time"), mend);
    }
    if (exchange->requests == 0) {
        return Finding::fails(Text::tr("the plug-in has asked nothing (%1)").arg(exchange->reason),
                              mend);
    }
    if (!exchange->whole) {
        return Finding::fails(exchange->transport, mend);
    }
    return Finding::ok(
        Text::tr("HTTP %1 after %2 ms").arg(exchange->status).arg(exchange->milliseconds));
}

/// What was found, with what the server wrote to it.
QString withWords(const QString& found, const Exchange& exchange)
{
    return exchange.words.isEmpty()
               ? found
               : Text::tr("%1; the server says: %2").arg(found, exchange.words);
}

Finding lookAtCredentials(const Exchange& exchange, const Subject& subject)
{
    const int status = exchange.status;
    if (status == unauthorised || status == forbidden) {
        return Finding::fails(
            withWords(Text::tr("refused (HTTP %1); user, password or key is wrong").arg(status),
                      exchange),
            Mend::words(Text::tr("ask whoever runs the loyalty server for user, password and key, "
                                 "and write them into %1 or the files that it names")
                            .arg(QFileInfo(subject.configFile).absoluteFilePath())));
    }
    return Finding::ok(Text::tr("accepted"));
}

/// The server itself, in the place of a path on it.
Mend atRoot(const Subject& subject)
{
    QUrl url(subject.serverAddress());
    const auto key = poshost::knownkeys::find(Use::ServerAddress);
    if (!key || url.path() == "/"_L1) {
        return tellOperator(subject);
    }
    url.setPath(u"/"_s);
    url.setQuery(QString());
    url.setFragment(QString());
    return SettingsFile(subject.configFile)
        .set(*key, SettingsFile::quoted(poshost::serveraddress::shown(url)));
}

Finding lookAtEndpoint(const Exchange& exchange, const Subject& subject)
{
    const int status = exchange.status;
    if (isService(status)) {
        return Finding::ok(Text::tr("the loyalty service answers"));
    }
    if (status < success + 200 || status == notFound || status == notForPosts) {
        return Finding::fails(
            withWords(Text::tr("HTTP %1: the loyalty service is not at this address").arg(status),
                      exchange),
            atRoot(subject));
    }
    if (status == proxyUnauthorised) {
        return Finding::fails(
            Text::tr("the proxy wants credentials (HTTP %1)").arg(status),
            Mend::words(Text::tr("ask whoever runs the network for the proxy's user and "
                                 "password, and write them into proxy under [http]")));
    }
    return Finding::fails(
        withWords(Text::tr("HTTP %1: the server cannot answer a pre-check").arg(status), exchange),
        tellOperator(subject));
}

Finding lookAtPrecheck(const Exchange& exchange, const Subject& subject)
{
    const bool isAnswer = exchange.status < redirection;
    if (isAnswer && exchange.accepted) {
        return Finding::ok(Text::tr("the plug-in understands the answer"));
    }
    if (isAnswer) {
        return Finding::fails(
            Text::tr("the plug-in does not understand the answer (%1)").arg(exchange.reason),
            tellOperator(subject));
    }
    if (subject.card.isEmpty()) {
        return Finding::notNeeded(
            Text::tr("no card was named; \"orva-till doctor --card NUMBER\" asks about one"));
    }
    return Finding::fails(
        withWords(Text::tr("the server refuses the card (HTTP %1)").arg(exchange.status), exchange),
        Mend::words(Text::tr("name a card that the server knows with --card, or ask "
                             "whoever runs it")));
}

Finding lookAtClock(const Exchange& exchange)
{
    QDateTime server = QLocale::c().toDateTime(exchange.date, u"ddd, dd MMM yyyy hh:mm:ss 'GMT'"_s);
    server.setTimeZone(QTimeZone::utc());
    if (!server.isValid()) {
        return Finding::notNeeded(Text::tr("the server does not tell its time"));
    }
    const qint64 ahead = server.secsTo(exchange.answeredAt);
    const Mend mend =
        Mend::words(Text::tr("set this machine's clock, and have it follow a time server"));
    const QString text = ahead < 0 ? Text::tr("%1 s behind the server's").arg(-ahead)
                                   : Text::tr("%1 s ahead of the server's").arg(ahead);
    if (std::abs(ahead) > failSeconds) {
        return Finding::fails(text, mend);
    }
    return std::abs(ahead) > warnSeconds ? Finding::warning(text, mend) : Finding::ok(text);
}

} // namespace

bool serverchecks::mayAsk(const Report& report)
{
    return report.isClear(neededToAsk());
}

void serverchecks::check(Report& report, const Subject& subject,
                         const std::optional<Exchange>& exchange)
{
    const QString answer = u"server.answer"_s;
    const QString credentials = u"server.credentials"_s;
    const QString endpoint = u"server.endpoint"_s;
    report.check(answer, Text::tr("Server's answer"), neededToAsk(),
                 [&] { return lookAtAnswer(exchange, subject); });
    report.check(u"clock"_s, Text::tr("Till's clock"), {answer},
                 [&] { return lookAtClock(*exchange); });
    report.check(credentials, Text::tr("Credentials"), {answer},
                 [&] { return lookAtCredentials(*exchange, subject); });
    report.check(endpoint, Text::tr("Service"), {credentials},
                 [&] { return lookAtEndpoint(*exchange, subject); });
    report.check(u"server.precheck"_s, Text::tr("Pre-check"), {endpoint},
                 [&] { return lookAtPrecheck(*exchange, subject); });
}

} // namespace till::doctor

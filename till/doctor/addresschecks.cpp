// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/addresschecks.h"

#include "host/http/serveraddress.h"
#include "host/services/restclient.h"
#include "till/doctor/report.h"
#include "till/doctor/subject.h"
#include "till/text.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

constexpr int defaultSeconds = RestClient::defaultTimeoutSeconds;
/// A server far away needs more than that now and then.
constexpr int shortestSensible = 2;
/// Longer than that no customer waits.
constexpr int longestSensible = 30;

/// The line with the address as it should be, without what must not be shown.
QString line(QUrl url)
{
    url.setQuery(QString());
    url.setFragment(QString());
    return u"[Orva] serverUrl = \"%1\""_s.arg(poshost::serveraddress::shown(url));
}

bool isHere(const QString& host)
{
    return host == "localhost"_L1 || host.startsWith("127."_L1) || host == "::1"_L1;
}

Finding lookAtScheme(const QUrl& url)
{
    if (url.scheme() == "http"_L1 && !isHere(url.host())) {
        QUrl secure = url;
        secure.setScheme(u"https"_s);
        return Finding::warning(Text::tr("http: everybody on the way can read the credentials"),
                                line(secure));
    }
    return Finding::ok(url.scheme());
}

Finding lookAtSlash(const QUrl& url)
{
    if (url.path().endsWith(u'/')) {
        return Finding::ok(Text::tr("ends with \"/\""));
    }
    QUrl mended = url;
    mended.setPath(url.path() + u'/');
    return Finding::fails(Text::tr("%1 does not end with \"/\"; what is asked for is put right "
                                   "behind it")
                              .arg(poshost::serveraddress::shown(url)),
                          line(mended));
}

Finding lookAtQuery(const QUrl& url)
{
    return url.hasQuery() || url.hasFragment()
               ? Finding::warning(Text::tr("something stands behind \"?\" or \"#\" and goes out "
                                           "with every request"),
                                  line(url))
               : Finding::ok(Text::tr("none"));
}

Finding lookAtTimeout(int seconds)
{
    const QString mend = u"[Orva] timeout = %1"_s.arg(defaultSeconds);
    if (seconds <= 0) {
        return Finding::warning(
            Text::tr("%1 stands for %2 seconds").arg(seconds).arg(defaultSeconds), mend);
    }
    if (seconds < shortestSensible) {
        return Finding::warning(Text::tr("%1 s: a slow answer is lost").arg(seconds), mend);
    }
    if (seconds > longestSensible) {
        return Finding::warning(
            Text::tr("%1 s: so long a customer waits when the server is away").arg(seconds), mend);
    }
    return Finding::ok(Text::tr("%1 s").arg(seconds));
}

} // namespace

void checkAddress(Report& report, const Subject& subject)
{
    const QUrl url(subject.serverAddress());
    const QString scheme = u"address.scheme"_s;
    report.check(scheme, Text::tr("Server address"), {u"config.Orva.serverUrl"_s},
                 [&] { return lookAtScheme(url); });
    report.check(u"address.slash"_s, Text::tr("Server address, its end"), {scheme},
                 [&] { return lookAtSlash(url); });
    report.check(u"address.query"_s, Text::tr("Server address, query"), {scheme},
                 [&] { return lookAtQuery(url); });
    report.check(u"timeout"_s, Text::tr("Time-out"), {u"config.Orva.timeout"_s}, [&] {
        return lookAtTimeout(subject.config->getInt(u"Orva:timeout"_s, defaultSeconds));
    });
}

} // namespace till::doctor

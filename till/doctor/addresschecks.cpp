// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/addresschecks.h"

#include "till/doctor/report.h"
#include "till/doctor/shownaddress.h"
#include "till/doctor/subject.h"
#include "till/text.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

constexpr int defaultSeconds = 10;
/// A server far away needs more than that now and then.
constexpr int shortestSensible = 2;
/// Longer than that no customer waits.
constexpr int longestSensible = 30;

/// The line with the address as it should be, without what must not be shown.
QString line(QUrl url)
{
    url.setUserInfo(QString());
    url.setQuery(QString());
    url.setFragment(QString());
    return u"[Orva] serverUrl = \"%1\""_s.arg(url.toString());
}

bool isHere(const QString& host)
{
    return host == "localhost"_L1 || host.startsWith("127."_L1) || host == "::1"_L1;
}

Finding lookAtScheme(const QUrl& url, const QString& written)
{
    const bool isHttp = url.scheme() == "http"_L1;
    if (!url.isValid() || url.host().isEmpty() || (!isHttp && url.scheme() != "https"_L1)) {
        return Finding::fails(
            Text::tr("%1 is no address with http:// or https:// and a name").arg(written),
            u"[Orva] serverUrl = \"https://loyalty.example.com/\""_s);
    }
    if (isHttp && !isHere(url.host())) {
        QUrl secure = url;
        secure.setScheme(u"https"_s);
        return Finding::warning(Text::tr("http: everybody on the way can read the credentials"),
                                line(secure));
    }
    return Finding::ok(url.scheme());
}

Finding lookAtSlash(const QUrl& url, const QString& written)
{
    if (url.path().endsWith(u'/')) {
        return Finding::ok(Text::tr("ends with \"/\""));
    }
    QUrl mended = url;
    mended.setPath(url.path() + u'/');
    return Finding::fails(Text::tr("%1 does not end with \"/\"; what is asked for is put right "
                                   "behind it")
                              .arg(written),
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

Finding lookAtUser(const QUrl& url)
{
    return url.userInfo().isEmpty()
               ? Finding::ok(Text::tr("none"))
               : Finding::warning(
                     Text::tr("somebody stands before \"@\"; credentials have keys of their own"),
                     line(url));
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
    const QUrl url(subject.serverAddress()); // as forgiving as the plug-ins are
    const QString written = shownAddress(subject.serverAddress());
    const QString scheme = u"address.scheme"_s;
    report.check(scheme, Text::tr("Server address"), {u"config.Orva.serverUrl"_s},
                 [&] { return lookAtScheme(url, written); });
    report.check(u"address.slash"_s, Text::tr("Server address, its end"), {scheme},
                 [&] { return lookAtSlash(url, written); });
    report.check(u"address.query"_s, Text::tr("Server address, query"), {scheme},
                 [&] { return lookAtQuery(url); });
    report.check(u"address.user"_s, Text::tr("Server address, user"), {scheme},
                 [&] { return lookAtUser(url); });
    report.check(u"timeout"_s, Text::tr("Time-out"), {u"config.Orva.timeout"_s}, [&] {
        return lookAtTimeout(subject.config->getInt(u"Orva:timeout"_s, defaultSeconds));
    });
}

} // namespace till::doctor

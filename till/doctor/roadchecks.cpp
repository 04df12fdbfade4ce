// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/roadchecks.h"

#include "host/http/connectionprobe.h"
#include "host/http/serveraddress.h"
#include "host/services/currenttime.h"
#include "till/doctor/keylines.h"
#include "till/doctor/report.h"
#include "till/doctor/subject.h"
#include "till/reason.h"
#include "till/screen/timetext.h"
#include "till/text.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Trouble = poshost::ConnectionProbe::Trouble;

/// Time to get a new certificate made and installed.
constexpr qint64 warnDays = 14;

/// One look at the way, with what all of its checks need.
class Road
{
public:
    Road(const Subject& given, const poshost::ConnectionProbe& gone)
        : subject(given), probe(gone), url(given.serverAddress()),
          secure(url.scheme() == "https"_L1), proxied(!given.proxy().isEmpty()),
          port(url.port(secure ? 443 : 80))
    {}

    bool isSecure() const { return secure; }

    Finding name() const
    {
        if (proxied) {
            return Finding::notNeeded(Text::tr("the proxy looks the name up"));
        }
        if (probe.trouble == Trouble::Name) {
            return Finding::fails(
                said(probe.text),
                Mend::words(
                    Text::tr("see to the address in the settings, to the network and to its "
                             "name server")));
        }
        return Finding::ok(url.host());
    }

    Finding proxy() const
    {
        if (!proxied) {
            return Finding::notNeeded(Text::tr("no proxy is configured"));
        }
        if (probe.trouble == Trouble::Proxy) {
            return Finding::fails(
                Text::tr("%1 does not let through (%2)")
                    .arg(poshost::serveraddress::shownProxy(subject.proxy()), said(probe.text)),
                Mend::words(
                    Text::tr("ask whoever runs the network for the proxy's address, and write "
                             "it as proxy under [http]")));
        }
        return Finding::ok(poshost::serveraddress::shownProxy(subject.proxy()));
    }

    Finding connection() const
    {
        if (probe.trouble == Trouble::Connection) {
            return Finding::fails(
                said(probe.text),
                Mend::words(
                    Text::tr("see to the address in the settings, to the network, and whether "
                             "the server runs")));
        }
        if (proxied && !secure) {
            return Finding::notNeeded(Text::tr("the proxy connects when it is asked"));
        }
        return Finding::ok(
            Text::tr("%1, port %2, after %3 ms").arg(probe.peer).arg(port).arg(probe.milliseconds));
    }

    Finding trust() const
    {
        if (!secure) {
            return Finding::notNeeded(Text::tr("http has no certificate"));
        }
        if (probe.trouble == Trouble::CaFile || probe.trouble == Trouble::Certificate) {
            return Finding::fails(
                said(probe.text),
                Mend::words(Text::tr("ask whoever runs the loyalty server for the certificate of "
                                     "its authority, and name its file as caFile under [http]")));
        }
        if (probe.trouble == Trouble::Tls) {
            return Finding::fails(said(probe.text), ofServer());
        }
        return Finding::ok(Text::tr("the certificate is trusted"));
    }

    Finding expiry() const
    {
        if (!secure) {
            return Finding::notNeeded(Text::tr("http has no certificate"));
        }
        if (probe.trouble == Trouble::Validity) {
            return Finding::fails(said(probe.text), ofServer());
        }
        const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
        const QString end = timetext::toTheMinute(probe.validUntil.toLocalTime());
        if (now.daysTo(probe.validUntil) < warnDays) {
            return Finding::warning(Text::tr("valid until %1").arg(end), ofServer());
        }
        return Finding::ok(Text::tr("valid until %1").arg(end));
    }

private:
    static Mend ofServer()
    {
        return Mend::words(Text::tr(
            "tell whoever runs the loyalty server: its certificate has to be renewed or put "
            "right"));
    }

    const Subject& subject;
    const poshost::ConnectionProbe& probe;
    const QUrl url;
    const bool secure;
    const bool proxied;
    const int port;
};

} // namespace

void checkRoad(Report& report, const Subject& subject, const poshost::ConnectionProbe& probe)
{
    const Road road(subject, probe);
    const auto look = [&](Finding (Road::*at)() const) {
        return subject.serverAddress().isEmpty() ? Finding::notNeeded(keylines::nobodyKnows())
                                                 : (road.*at)();
    };
    const QStringList start{u"config.http.proxy"_s, u"address.scheme"_s};
    const QString name = u"road.name"_s;
    const QString proxy = u"road.proxy"_s;
    const QString connection = u"road.connection"_s;
    const QString trust = u"tls.trust"_s;
    report.check(proxy, Text::tr("Proxy"), start, [&] { return look(&Road::proxy); });
    report.check(name, Text::tr("Server's name"), start + QStringList{proxy},
                 [&] { return look(&Road::name); });
    report.check(connection, Text::tr("Connection"), {proxy, name},
                 [&] { return look(&Road::connection); });
    QStringList trusting{connection};
    if (road.isSecure()) {
        trusting.append(u"config.http.caFile"_s);
    }
    report.check(trust, Text::tr("Server's certificate"), trusting,
                 [&] { return look(&Road::trust); });
    report.check(u"tls.expiry"_s, Text::tr("Certificate's end"), {trust},
                 [&] { return look(&Road::expiry); });
}

} // namespace till::doctor

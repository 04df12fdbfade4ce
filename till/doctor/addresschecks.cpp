// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/addresschecks.h"

#include "host/config/knownkeys.h"
#include "host/http/serveraddress.h"
#include "till/doctor/keylines.h"
#include "till/doctor/report.h"
#include "till/doctor/settingsfile.h"
#include "till/doctor/subject.h"
#include "till/text.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Use = poshost::ConfigKey::Use;

/// A server far away needs more than that now and then.
constexpr int shortestSensible = 2;
/// Longer than that no customer waits.
constexpr int longestSensible = 30;

/// The line with the address as it should be, without what must not be shown.
Mend line(const poshost::ConfigKey& key, const SettingsFile& file, QUrl url)
{
    url.setQuery(QString());
    url.setFragment(QString());
    return file.set(key, SettingsFile::quoted(poshost::serveraddress::shown(url)));
}

Finding lookAtScheme(const poshost::ConfigKey& key, const SettingsFile& file, const QUrl& url)
{
    if (url.scheme() == "http"_L1 && !keylines::isHere(url.host())) {
        return Finding::warning(
            Text::tr("http: everybody on the way can read the credentials"),
            Mend::words(Text::tr("ask whoever runs the loyalty server for its https address, and "
                                 "write it as %1 under [%2] in %3")
                            .arg(key.key, key.table, file.name())));
    }
    return Finding::ok(url.scheme());
}

Finding lookAtSlash(const poshost::ConfigKey& key, const SettingsFile& file, const QUrl& url)
{
    if (url.path().endsWith(u'/')) {
        return Finding::ok(Text::tr("ends with \"/\""));
    }
    QUrl mended = url;
    mended.setPath(url.path() + u'/');
    return Finding::fails(Text::tr("%1 does not end with \"/\"; what is asked for is put right "
                                   "behind it")
                              .arg(poshost::serveraddress::shown(url)),
                          line(key, file, mended).safe());
}

Finding lookAtQuery(const poshost::ConfigKey& key, const SettingsFile& file, const QUrl& url)
{
    return url.hasQuery() || url.hasFragment()
               ? Finding::warning(Text::tr("something stands behind \"?\" or \"#\" and goes out "
                                           "with every request"),
                                  line(key, file, url))
               : Finding::ok(Text::tr("none"));
}

Finding lookAtTimeout(const poshost::ConfigKey& key, const SettingsFile& file, const Config& config)
{
    const int defaultSeconds = key.defaultValue.toInt();
    const int seconds = config.getInt(key.name(), defaultSeconds);
    const Mend mend = file.set(key, QString::number(defaultSeconds)).safe();
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
    const auto address = poshost::knownkeys::find(Use::ServerAddress);
    const SettingsFile file(subject.configFile);
    const auto look =
        [&](Finding (*at)(const poshost::ConfigKey&, const SettingsFile&, const QUrl&)) {
            return address ? at(*address, file, url) : Finding::notNeeded(keylines::nobodyKnows());
        };
    report.check(scheme, Text::tr("Server address"), keylines::needed(Use::ServerAddress),
                 [&] { return look(lookAtScheme); });
    report.check(u"address.slash"_s, Text::tr("Server address, its end"), {scheme},
                 [&] { return look(lookAtSlash); });
    report.check(u"address.query"_s, Text::tr("Server address, query"), {scheme},
                 [&] { return look(lookAtQuery); });
    const auto timeout = poshost::knownkeys::find(Use::Timeout);
    report.check(u"timeout"_s, Text::tr("Time-out"), keylines::needed(Use::Timeout), [&] {
        return timeout ? lookAtTimeout(*timeout, file, *subject.config)
                       : Finding::notNeeded(keylines::nobodyKnows());
    });
}

} // namespace till::doctor

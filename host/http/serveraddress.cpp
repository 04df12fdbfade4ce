// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/serveraddress.h"

#include <QStringList>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

const QString hidden = u"***"_s;

bool isOfServer(const QUrl& url)
{
    return url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
}

bool isOfProxy(const QUrl& url)
{
    return isOfServer(url) || url.scheme().startsWith("socks"_L1);
}

bool isWhole(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty();
}

/// An "@" behind the host says that the host is none: an unescaped "/", "?" or "#" stands in a
/// password.
bool isMistyped(const QUrl& url)
{
    return (url.path(QUrl::FullyEncoded) + url.query(QUrl::FullyEncoded) +
            url.fragment(QUrl::FullyEncoded))
        .contains(u'@');
}

QString composed(const QUrl& url)
{
    QUrl shown;
    shown.setScheme(url.scheme());
    shown.setHost(url.host());
    shown.setPort(url.port());
    shown.setPath(url.path(QUrl::FullyEncoded), QUrl::TolerantMode);
    const QString text = shown.toString(QUrl::FullyEncoded);
    return url.hasQuery() || url.hasFragment() ? text + u"?"_s + hidden : text;
}

} // namespace

Message serveraddress::complaintAbout(const QString& written)
{
    if (written.contains(u'@')) {
        return Message::of("address.at");
    }
    const QUrl url(written); // as forgiving as the plug-ins are
    return written.isEmpty() || (isWhole(url) && isOfServer(url)) ? Message()
                                                                  : Message::of("address.none");
}

QString serveraddress::shown(const QUrl& url)
{
    return isWhole(url) && isOfServer(url) && !isMistyped(url) ? composed(url) : hidden;
}

QString serveraddress::shown(const QString& written)
{
    return written.isEmpty() ? QString() : shown(QUrl(written));
}

QString serveraddress::shownProxy(const QString& written)
{
    if (written.isEmpty()) {
        return {};
    }
    const QUrl url(written.contains("://"_L1) ? written : u"http://"_s + written);
    return isWhole(url) && isOfProxy(url) && !isMistyped(url) ? composed(url) : hidden;
}

} // namespace poshost

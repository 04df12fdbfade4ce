// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "log4qt/logmanager.h"
#include "tests/support/logcapture.h"
#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/steps.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tests::debugLine;
using tests::infoLine;
using tests::LogCapture;
using tests::LogLine;
using tests::OpenInterface;
using Headers = QHash<QString, QString>;

namespace {

Headers twoHeaders()
{
    return {{u"Content-Type"_s, u"application/xml"_s}, {u"Accept"_s, u"application/xml"_s}};
}

QString authorization(const QString& user, const QString& password, const QString& apiKey)
{
    OpenInterface client;
    client.setAuthData(user, password, apiKey);
    return client.headers.value(u"Authorization"_s);
}

/// The credentials as the server decodes them from the header.
QByteArray credentials(const QString& user, const QString& password, const QString& apiKey)
{
    return QByteArray::fromBase64(authorization(user, password, apiKey).mid(6).toLatin1(),
                                  QByteArray::AbortOnBase64DecodingErrors);
}

} // namespace

TEST(FreshClient, hasTheInitialValues)
{
    const OpenInterface client;
    EXPECT_EQ(client.timeout, 10);
    EXPECT_EQ(client.headers, twoHeaders());
    EXPECT_TRUE(client.pos.isEmpty());
    EXPECT_TRUE(client.merchantId.isEmpty());
    EXPECT_TRUE(client.serverUrl.isEmpty());
    EXPECT_FALSE(client.xmlWrapper.isNull());
    EXPECT_EQ(client.logger, Log4Qt::LogManager::logger(u"orva"_s));
}

TEST(FreshClient, hasAnEmptyLastResponse)
{
    const OpenInterface client;
    EXPECT_TRUE(client.lastResponse.isNull());
    EXPECT_TRUE(client.getLastResponse().isNull());
    EXPECT_TRUE(client.getLastResponse().documentElement().isNull());
}

TEST(FreshClient, declaresItsMembersInTheOrderOfTheContract)
{
    const OpenInterface client;
    const auto at = [](const auto& member) { return reinterpret_cast<quintptr>(&member); };
    EXPECT_EQ(at(client.pos), reinterpret_cast<quintptr>(&client) + sizeof(void*));
    EXPECT_LT(at(client.pos), at(client.merchantId));
    EXPECT_LT(at(client.merchantId), at(client.timeout));
    EXPECT_LT(at(client.timeout), at(client.serverUrl));
    EXPECT_LT(at(client.serverUrl), at(client.headers));
    EXPECT_LT(at(client.headers), at(client.lastResponse));
    EXPECT_LT(at(client.lastResponse), at(client.xmlWrapper));
    EXPECT_LT(at(client.xmlWrapper), at(client.logger));
}

TEST(FreshClient, logsNothing)
{
    const LogCapture log;
    const OpenInterface client;
    EXPECT_EQ(log.lines(), QList<LogLine>());
}

TEST(SetUrl, logsAndStoresTheAddress)
{
    const LogCapture log;
    OpenInterface client;
    client.setUrl(u"https://loyalty.example:8443/orva/"_s);
    EXPECT_EQ(client.serverUrl, QUrl(u"https://loyalty.example:8443/orva/"_s));
    EXPECT_EQ(log.lines(),
              QList<LogLine>{infoLine(u"Адрес сервера: https://loyalty.example:8443/orva/"_s)});
}

TEST(SetUrl, takesABadAddressWithoutReporting)
{
    const LogCapture log;
    OpenInterface client;
    client.setUrl(u"http://[bad"_s);
    EXPECT_FALSE(client.serverUrl.isValid());
    EXPECT_EQ(log.lines(), QList<LogLine>{infoLine(u"Адрес сервера: http://[bad"_s)});
}

TEST(SetUrl, parsesInTheTolerantMode)
{
    OpenInterface client;
    client.setUrl(u"http://loyalty.example/a b/"_s);
    EXPECT_TRUE(client.serverUrl.isValid());
    EXPECT_EQ(client.serverUrl.path(QUrl::FullyDecoded), u"/a b/"_s);
}

TEST(SetUrl, replacesTheEarlierAddress)
{
    OpenInterface client;
    client.setUrl(u"http://first.example/"_s);
    client.setUrl(u"http://second.example/"_s);
    EXPECT_EQ(client.serverUrl, QUrl(u"http://second.example/"_s));
}

TEST(SetCashData, storesTheFirstArgumentAsMerchantAndTheSecondAsPos)
{
    const LogCapture log;
    OpenInterface client;
    client.setCashData(u"1042"_s, u"3"_s);
    EXPECT_EQ(client.merchantId, u"1042"_s);
    EXPECT_EQ(client.pos, u"3"_s);
    // the line calls the first argument the cash desk's code, which is meant
    EXPECT_EQ(log.lines(),
              QList<LogLine>{infoLine(u"Код кассы в системе лояльности: 1042, код магазина в "
                                      u"системе лояльности: 3"_s)});
}

TEST(SetTimeout, storesEveryValueUnchangedAndLogsNothing)
{
    const LogCapture log;
    OpenInterface client;
    for (const int value : {30, 0, -5}) {
        client.setTimeout(value);
        EXPECT_EQ(client.timeout, value);
    }
    EXPECT_EQ(log.lines(), QList<LogLine>());
}

TEST(SetAuthData, addsTheAuthorizationHeader)
{
    OpenInterface client;
    client.setAuthData(u"u"_s, u"p"_s, u"k"_s);
    Headers expected = twoHeaders();
    expected.insert(u"Authorization"_s,
                    u"Basic dTo1MTZiOTc4M2ZjYTUxN2VlY2JkMWQwNjRkYTJkMTY1MzEwYjE5NzU5Oms="_s);
    EXPECT_EQ(client.headers, expected);
}

TEST(SetAuthData, replacesTheEarlierHeader)
{
    OpenInterface client;
    client.setAuthData(u"u"_s, u"p"_s, u"k"_s);
    client.setAuthData(u"u2"_s, u"p2"_s, u"k2"_s);
    EXPECT_EQ(client.headers.size(), 3);
    EXPECT_EQ(client.headers.value(u"Authorization"_s),
              u"Basic dTI6YzVmZDk2MWM5ZjczN2E5NTVhMzA4MDUwMDYyZTdhMmMzNGVlNjdjMzprMg=="_s);
}

TEST(SetAuthData, logsTheUserButNeitherPasswordNorKey)
{
    const LogCapture log;
    OpenInterface client;
    client.setAuthData(u"till-7"_s, u"secret-password"_s, u"secret-key"_s);
    EXPECT_EQ(log.lines(),
              QList<LogLine>{debugLine(u"Установка данных авторизации для пользователя till-7"_s)});
}

TEST(SetAuthData, hashesAnEmptyPasswordToo)
{
    EXPECT_EQ(credentials(u"u"_s, QString(), u"k"_s),
              QByteArray("u:da39a3ee5e6b4b0d3255bfef95601890afd80709:k"));
}

TEST(SetAuthData, hashesTheLatin1BytesOfThePassword)
{
    // SHA-1 of 70 E9, not of the three bytes of UTF-8
    EXPECT_EQ(credentials(u"till"_s, u"pé"_s, u"key"_s),
              QByteArray("till:ee647d1165f86d27e5c7dbdf90ab5ce5417a7f9a:key"));
}

TEST(SetAuthData, encodesTheCredentialsInTheLocalEncoding)
{
    EXPECT_EQ(authorization(u"касса"_s, u"p"_s, u"k"_s),
              u"Basic "
              u"0LrQsNGB0YHQsDo1MTZiOTc4M2ZjYTUxN2VlY2JkMWQwNjRkYTJkMTY1MzEwYjE5NzU5Oms="_s);
}

TEST(SetAuthData, usesTheStandardAlphabetWithFill)
{
    EXPECT_EQ(authorization(u"~~~?\?\?>>>"_s, u"p"_s, u"k"_s),
              u"Basic fn5+Pz8/Pj4+OjUxNmI5NzgzZmNhNTE3ZWVjYmQxZDA2NGRhMmQxNjUzMTBiMTk3NTk6aw=="_s);
}

TEST(SetAuthData, substitutesOneAfterAnotherSoThatAPlaceholderInTheUserIsTakenUp)
{
    const QByteArray hash = "516b9783fca517eecbd1d064da2d165310b19759";
    EXPECT_EQ(credentials(u"a%2b"_s, u"p"_s, u"k"_s), "a" + hash + "b:" + hash + ":k");
    EXPECT_EQ(credentials(u"%3"_s, u"p"_s, u"k"_s), "k:" + hash + ":k");
    EXPECT_EQ(credentials(u"%1"_s, u"p"_s, u"k"_s), hash + ":k:%3");
}

TEST(SetAuthData, leavesAPlaceholderInTheKeyAlone)
{
    EXPECT_EQ(credentials(u"u"_s, u"p"_s, u"%1%2%3"_s),
              QByteArray("u:516b9783fca517eecbd1d064da2d165310b19759:%1%2%3"));
}

TEST(LastResponse, sharesItsNodesWithTheDocumentThatWasSet)
{
    OpenInterface client;
    QDomDocument document = tests::parse(u"<answer/>"_s);
    client.setLastResponse(document);
    document.documentElement().setAttribute(u"changed"_s, u"yes"_s);
    EXPECT_EQ(client.lastResponse.documentElement().attribute(u"changed"_s), u"yes"_s);
    EXPECT_TRUE(client.getLastResponse() == document);
}

TEST(LastResponse, isReadAsACopyThatSharesItsNodes)
{
    OpenInterface client;
    client.setLastResponse(tests::parse(u"<answer/>"_s));
    QDomElement root = client.getLastResponse().documentElement();
    root.setAttribute(u"changed"_s, u"yes"_s);
    EXPECT_EQ(client.lastResponse.documentElement().attribute(u"changed"_s), u"yes"_s);
}

TEST(LastResponse, isReplacedByALaterDocument)
{
    OpenInterface client;
    client.setLastResponse(tests::parse(u"<first/>"_s));
    client.setLastResponse(tests::parse(u"<second/>"_s));
    EXPECT_EQ(client.getLastResponse().documentElement().tagName(), u"second"_s);
    client.setLastResponse(QDomDocument());
    EXPECT_TRUE(client.getLastResponse().documentElement().isNull());
}

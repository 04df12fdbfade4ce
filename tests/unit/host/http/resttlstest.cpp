// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/restclient.h"
#include "tests/support/configured.h"
#include "tests/support/tlsserver.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

class RestTls : public ::testing::Test
{
protected:
    static QByteArray trusting(const QString& caFile)
    {
        return "[http]\ncaFile = \"" + caFile.toUtf8() + "\"\n";
    }

    static int post(RestClient& client, const QUrl& url)
    {
        client.setTimeout(5);
        client.post(url, "body", {});
        return client.getError();
    }

    TestFolder folder;
};

TEST_F(RestTls, ACertificateOfAnUnknownAuthorityIsRefused)
{
    const TlsServer server(folder.file(QString()), u"localhost"_s);
    RestClient client;
    EXPECT_GT(post(client, server.url(u"localhost"_s)), 0);
    EXPECT_EQ(client.getHttpStatusCode(), 0);
    EXPECT_EQ(client.getSendCount(), 0) << "the request must not reach a server without trust";
    EXPECT_THAT(client.getErrorText().ru().toStdString(),
                HasSubstr("сертификату сервера нет доверия"));
    EXPECT_EQ(server.requests(), 0);
}

TEST_F(RestTls, ACertificateOfTheConfiguredAuthorityIsAccepted)
{
    const TlsServer server(folder.file(QString()), u"localhost"_s);
    const Configured configured(trusting(server.authorityFile()));
    RestClient client;
    EXPECT_EQ(post(client, server.url(u"localhost"_s)), 0)
        << client.getErrorText().ru().toStdString();
    EXPECT_EQ(client.getResponse(), "secure");
}

TEST_F(RestTls, ACertificateForAnotherNameIsRefused)
{
    const TlsServer server(folder.file(QString()), u"elsewhere.test"_s);
    const Configured configured(trusting(server.authorityFile()));
    RestClient client;
    EXPECT_GT(post(client, server.url(u"localhost"_s)), 0);
    EXPECT_THAT(client.getErrorText().ru().toStdString(),
                HasSubstr("сертификату сервера нет доверия"));
    EXPECT_EQ(server.requests(), 0);
}

TEST_F(RestTls, AnAuthorityFileThatIsMissingIsNamedAsTheCause)
{
    const TlsServer server(folder.file(QString()), u"localhost"_s);
    const Configured configured(trusting(folder.file(u"absent.pem"_s)));
    RestClient client;
    EXPECT_GT(post(client, server.url(u"localhost"_s)), 0);
    EXPECT_THAT(client.getErrorText().ru().toStdString(), HasSubstr("http.caFile"));
}

TEST_F(RestTls, AKeptConnectionIsNotUsedUnderAnotherTrust)
{
    const TlsServer server(folder.file(QString()), u"localhost"_s);
    {
        const Configured configured(trusting(server.authorityFile()));
        RestClient client;
        ASSERT_EQ(post(client, server.url(u"localhost"_s)), 0);
    }
    RestClient client;
    EXPECT_GT(post(client, server.url(u"localhost"_s)), 0)
        << "the trust is gone, the kept connection must not stand in for it";
}

TEST_F(RestTls, ATlsRequestToAPlainServerFails)
{
    const TlsServer server(folder.file(QString()), u"localhost"_s);
    QUrl url = server.url(u"localhost"_s);
    url.setScheme(u"http"_s);
    RestClient client;
    EXPECT_GT(post(client, url), 0);
    EXPECT_EQ(server.requests(), 0);
}

TEST_F(RestTls, HundredRequestsShakeHandsOnce)
{
    const TlsServer server(folder.file(QString()), u"localhost"_s);
    const Configured configured(trusting(server.authorityFile()));
    for (int i = 0; i < 100; ++i) {
        RestClient client;
        ASSERT_EQ(post(client, server.url(u"localhost"_s)), 0);
    }
    EXPECT_EQ(server.requests(), 100);
    EXPECT_EQ(server.peers(), 1);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/refusallistener.h"
#include "contract/rawserver.h"
#include "host/services/restclient.h"

#include <gtest/gtest.h>
#include <thread>

using poshost::RefusalListener;

namespace {

/// What one request to a server that always answers so leaves with the listener.
void ask(const std::string& statusLine, const std::string& body, const std::string& headers = {})
{
    RawServer server(RawServer::answering(RawServer::answer(statusLine, body, headers)));
    RestClient client;
    client.setTimeout(5);
    client.post(server.url(), "body", {});
    ASSERT_GT(client.getHttpStatusCode(), 0);
}

} // namespace

TEST(RefusalListener, hasTheLastRefusalsStatusBodyAndType)
{
    const RefusalListener heard;
    EXPECT_EQ(heard.status(), 0);
    ask("424 Failed Dependency", "no such card", "Content-Type: text/plain; charset=koi8-r\r\n");
    EXPECT_EQ(heard.status(), 424);
    EXPECT_EQ(heard.body(), "no such card");
    EXPECT_EQ(heard.contentType(), QStringLiteral("text/plain; charset=koi8-r"));
}

TEST(RefusalListener, forgetsARefusalWhenAnAnswerFollows)
{
    const RefusalListener heard;
    ask("500 Internal Server Error", "broken");
    ask("200 OK", "fine");
    EXPECT_EQ(heard.status(), 0);
    EXPECT_EQ(heard.body(), QByteArray());
}

TEST(RefusalListener, hearsItsOwnThreadOnlyAndWithTheOnesInsideOfIt)
{
    const RefusalListener outer;
    std::thread([] { ask("500 Internal Server Error", "of another thread"); }).join();
    EXPECT_EQ(outer.status(), 0);
    {
        const RefusalListener inner;
        ask("409 Conflict", "seen");
        EXPECT_EQ(inner.body(), "seen");
    }
    EXPECT_EQ(outer.body(), "seen");
    ask("424 Failed Dependency", "after it");
    EXPECT_EQ(outer.body(), "after it");
}

TEST(RefusalListener, keepsTheBeginningOfALongBody)
{
    const RefusalListener heard;
    ask("500 Internal Server Error", std::string(RefusalListener::longestBody + 1, 'x'));
    EXPECT_EQ(heard.body().size(), RefusalListener::longestBody);
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/restclient.h"

#include <QElapsedTimer>
#include <condition_variable>
#include <cstring>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <mutex>
#include <netdb.h>

using namespace Qt::StringLiterals;

namespace {

/// A name server that does not answer: whoever asks for this name waits until the test lets go.
constexpr const char* hangingName = "hanging-resolver.test";

std::mutex mutex;
std::condition_variable changed;
int waiting = 0;
bool letGo = false;

int hang()
{
    std::unique_lock lock(mutex);
    ++waiting;
    changed.notify_all();
    changed.wait_for(lock, std::chrono::seconds(30), [] { return letGo; });
    --waiting;
    changed.notify_all();
    return EAI_AGAIN;
}

} // namespace

/// Stands in front of the C library's: libcurl calls the one of the program.
extern "C" __attribute__((visibility("default"))) int
getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** result)
{
    if (node != nullptr && std::strcmp(node, hangingName) == 0) {
        return hang();
    }
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(node, service, hints, result);
}

namespace {

class RestResolver : public ::testing::Test
{
protected:
    void TearDown() override
    {
        std::unique_lock lock(mutex);
        letGo = true;
        changed.notify_all();
        EXPECT_TRUE(changed.wait_for(lock, std::chrono::seconds(5), [] { return waiting == 0; }));
        letGo = false;
    }
};

TEST_F(RestResolver, AHangingNameResolutionEndsWithTheTimeout)
{
    for (int i = 0; i < 2; ++i) { // a resolver left behind is in nobody's way
        RestClient client;
        client.setTimeout(1);
        QElapsedTimer clock;
        clock.start();
        client.post(QUrl(u"http://hanging-resolver.test/api"_s), "body", {});
        EXPECT_LE(clock.elapsed(), 1500);
        EXPECT_GE(clock.elapsed(), 950);
        EXPECT_GT(client.getError(), 0);
        EXPECT_EQ(client.getSendCount(), 0);
        EXPECT_EQ(client.getErrorText().ru(),
                  u"Сервер hanging-resolver.test: нет ответа за отведённое время"_s);
        const std::lock_guard lock(mutex);
        EXPECT_EQ(waiting, i + 1) << "the resolver was not asked";
    }
}

} // namespace

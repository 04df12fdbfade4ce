// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/config.h"
#include "host/services/currenttime.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/restclient.h"
#include "host/services/session.h"
#include "tests/unit/client/printers.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

/// The address under which the host library itself knows a variable; null when it exports none of
/// that name.
void* inHostLibrary(const char* mangledName)
{
    void* const library = dlopen(ORVA_HOST_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
    EXPECT_NE(library, nullptr) << "the program runs on another host library";
    if (library == nullptr) {
        return nullptr;
    }
    void* const address = dlsym(library, mangledName);
    dlclose(library);
    return address;
}

TEST(Singleton, StartsWithoutAService)
{
    EXPECT_EQ(Singleton<Config>::instance, nullptr);
    EXPECT_EQ(Singleton<Session>::instance, nullptr);
    EXPECT_EQ(Singleton<DBQueueBroker>::instance, nullptr);
}

TEST(Singleton, ThePointersAreTheHostLibrarysOwn)
{
    EXPECT_EQ(inHostLibrary("_ZN9SingletonI6ConfigE8instanceE"), &Singleton<Config>::instance);
    EXPECT_EQ(inHostLibrary("_ZN9SingletonI7SessionE8instanceE"), &Singleton<Session>::instance);
    EXPECT_EQ(inHostLibrary("_ZN9SingletonI13DBQueueBrokerE8instanceE"),
              &Singleton<DBQueueBroker>::instance);
}

TEST(MockFactory, ThePointersAreTheHostLibrarysOwn)
{
    EXPECT_EQ(inHostLibrary("_ZN11MockFactoryI10RestClientE6mockedE"),
              &MockFactory<RestClient>::mocked);
    EXPECT_EQ(inHostLibrary("_ZN11MockFactoryI11CurrentTimeE6mockedE"),
              &MockFactory<CurrentTime>::mocked);
}

TEST(Session, IsEmptyAtFirst)
{
    Session session;
    EXPECT_TRUE(session.getDocument().isNull());
    ASSERT_FALSE(session.getSessionContext().isNull());
    EXPECT_FALSE(session.getSessionContext()->getContextValue().isValid());
}

} // namespace

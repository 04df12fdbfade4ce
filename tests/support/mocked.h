// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/mockfactory.h"
#include "host/core/singleton.h"
#include "host/services/currenttime.h"
#include "host/services/restclient.h"

#include <QDateTime>

#include <gmock/gmock.h>

namespace tests {

/// Registers a double with MockFactory for as long as it lives; the one registered before comes
/// back afterwards. The double is not owned.
template <typename T>
class Registered
{
public:
    explicit Registered(T& object) : before(MockFactory<T>::mocked)
    {
        MockFactory<T>::mocked = &object;
    }
    ~Registered() { MockFactory<T>::mocked = before; }
    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;

private:
    T* before;
};

/// Puts an object in the place of a process-wide service for as long as it lives; null to see the
/// service made. A service that was made meanwhile is deleted.
template <typename T>
class InSingleton
{
public:
    explicit InSingleton(T* object) : before(Singleton<T>::instance), placed(object)
    {
        Singleton<T>::instance = object;
    }
    ~InSingleton()
    {
        if (Singleton<T>::instance != placed) {
            delete Singleton<T>::instance;
        }
        Singleton<T>::instance = before;
    }
    InSingleton(const InSingleton&) = delete;
    InSingleton& operator=(const InSingleton&) = delete;

private:
    T* before;
    T* placed;
};

/// The HTTP client. Register it with Registered<RestClient>.
class MockRestClient : public RestClient
{
public:
    MOCK_METHOD(void, post,
                (const QUrl& url, const QByteArray& body, (const QHash<QString, QString>&)headers),
                (override));
    MOCK_METHOD(int, getError, (), (override));
    MOCK_METHOD(int, getHttpStatusCode, (), (override));
    MOCK_METHOD(tr::Tr, getErrorText, (), (override));
    MOCK_METHOD(QByteArray, getResponse, (), (override));
    MOCK_METHOD(void, setTimeout, (int seconds), (override));
    MOCK_METHOD(QString, getResponseHeader, (const QString& name), (override));
    MOCK_METHOD(int, getSendCount, (), (override));
};

/// The clock. Register it with Registered<CurrentTime>.
class MockCurrentTime : public CurrentTime
{
public:
    MOCK_METHOD(QDateTime, currentDateTime, (), (override));
};

/// A clock that stands still, for tests in which the time is one value among others.
class StoppedClock : public CurrentTime
{
public:
    explicit StoppedClock(const QDateTime& value) : time(value), registration(*this) {}

    QDateTime currentDateTime() override { return time; }

private:
    QDateTime time;
    Registered<CurrentTime> registration;
};

} // namespace tests

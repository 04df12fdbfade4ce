// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/hostundertest.h"

#include "host/services/sessioncontext.h"

namespace contract {

QueueUnderTest::~QueueUnderTest() = default;

HostUnderTest::~HostUnderTest() = default;

std::unique_ptr<Session>
HostUnderTest::makeSession(const QSharedPointer<AbstractDocument>& document,
                           const QVariant& contextValue)
{
    auto session = std::make_unique<Session>();
    session->setDocument(document);
    session->setSessionContext(QSharedPointer<SessionContext>::create(contextValue));
    return session;
}

QSharedPointer<RestClient> HostUnderTest::makeRestClient()
{
    return MockFactory<RestClient>::create();
}

QSharedPointer<CurrentTime> HostUnderTest::makeClock()
{
    return MockFactory<CurrentTime>::create();
}

std::unique_ptr<XmlWrapper> HostUnderTest::makeXmlWrapper()
{
    return std::make_unique<XmlWrapper>();
}

} // namespace contract

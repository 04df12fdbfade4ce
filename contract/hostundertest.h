// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/documentdata.h"
#include "contract/queueundertest.h"
#include "host/document/abstractdocument.h"
#include "host/services/config.h"
#include "host/services/currenttime.h"
#include "host/services/restclient.h"
#include "host/services/session.h"
#include "host/xml/xmlwrapper.h"

#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QVariant>

#include <memory>

namespace contract {

/// What the suite has to know of a host to test it: how its objects are made. Everything is called
/// on the thread that runs the suite, one test after the other; the objects live no longer than a
/// test.
///
/// What has a body here makes the object as a plug-in does. Override it where the host's own one
/// needs more than that.
class HostUnderTest
{
public:
    HostUnderTest() = default;
    HostUnderTest(const HostUnderTest&) = delete;
    HostUnderTest& operator=(const HostUnderTest&) = delete;
    virtual ~HostUnderTest();

    /// A new document of the host; not null.
    virtual QSharedPointer<AbstractDocument> makeDocument(const DocumentData& data) = 0;
    /// The document as the host has it again after it was suspended and the program restarted: made
    /// anew from what is kept on the disk. Goods, impacts and cards may be left out.
    virtual QSharedPointer<AbstractDocument>
    suspendAndRestore(const QSharedPointer<AbstractDocument>& document) = 0;
    /// A configuration that holds these values and no others.
    /// @param values "Table:key" -> text or whole number
    virtual std::unique_ptr<Config> makeConfig(const QMap<QString, QVariant>& values) = 0;
    virtual std::unique_ptr<QueueUnderTest> makeQueue() = 0;

    /// A session that works on a document, which may be null, in a context of that value.
    virtual std::unique_ptr<Session> makeSession(const QSharedPointer<AbstractDocument>& document,
                                                 const QVariant& contextValue);
    /// A client that sends to addresses on the loopback; a new one at every call.
    virtual QSharedPointer<RestClient> makeRestClient();
    virtual QSharedPointer<CurrentTime> makeClock();
    virtual std::unique_ptr<XmlWrapper> makeXmlWrapper();
};

} // namespace contract

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/singleton.h"
#include "host/document/abstractdocument.h"
#include "host/hostexport.h"
#include "host/services/sessioncontext.h"

#include <QSharedPointer>

/// The cashier's session: the document being worked on. Host thread only.
class HOST_EXPORT Session
{
public:
    /// A session without a document and with an empty context.
    Session();
    virtual ~Session();

    /// The document that the host is working on, shared; null between documents. A loyalty system
    /// identifies cards and keeps its state on this one.
    virtual QSharedPointer<AbstractDocument> getDocument();
    /// Called by the host when it takes a document up or, with null, lays it down, together with
    /// BasicLoyaltySystem::setDocument.
    /// @param value shared until the next call
    void setDocument(const QSharedPointer<AbstractDocument>& value) { document = value; }

    /// What the session is about; never null.
    virtual QSharedPointer<SessionContext> getSessionContext();
    /// Called by the host before the first document of a session.
    /// @param value shared until the next call, not null
    void setSessionContext(const QSharedPointer<SessionContext>& value) { context = value; }

private:
    QSharedPointer<AbstractDocument> document;
    QSharedPointer<SessionContext> context;
};

extern template class HOST_EXPORT Singleton<Session>;

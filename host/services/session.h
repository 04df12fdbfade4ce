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

    /// The document that the host is working on; null between documents.
    virtual QSharedPointer<AbstractDocument> getDocument();
    void setDocument(const QSharedPointer<AbstractDocument>& value) { document = value; }

    /// Never null.
    virtual QSharedPointer<SessionContext> getSessionContext();
    void setSessionContext(const QSharedPointer<SessionContext>& value) { context = value; }

private:
    QSharedPointer<AbstractDocument> document;
    QSharedPointer<SessionContext> context;
};

extern template class HOST_EXPORT Singleton<Session>;

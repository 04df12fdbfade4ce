// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"
#include "host/hostexport.h"

#include <QSharedPointer>

/// Keeps the document that the host is working on. Nothing here is virtual but the destructor:
/// plug-ins rely on the slot order of the classes derived from it.
class HOST_EXPORT DocumentWatcher
{
public:
    DocumentWatcher();
    DocumentWatcher(const DocumentWatcher&) = delete;
    DocumentWatcher& operator=(const DocumentWatcher&) = delete;
    virtual ~DocumentWatcher();

    /// Called by the host when it takes up, or with null when it lays down, a document. Only the
    /// pointer changes: what a loyalty system holds of the former document stays until it is
    /// cleared.
    /// @param value shared with the host until the next call
    void setDocument(const QSharedPointer<AbstractDocument>& value) { document = value; }

protected:
    /// The document of the last setDocument; null between documents.
    QSharedPointer<AbstractDocument> document;
};

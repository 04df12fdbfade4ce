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

    /// Called by the host when it takes up, or with null when it lays down, a document.
    void setDocument(const QSharedPointer<AbstractDocument>& value) { document = value; }

protected:
    QSharedPointer<AbstractDocument> document;
};

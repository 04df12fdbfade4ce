// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/session.h"

template class Singleton<Session>;

SessionContext::SessionContext(const QVariant& value) : contextValue(value) {}

Session::Session() : context(QSharedPointer<SessionContext>::create()) {}

Session::~Session() = default;

QSharedPointer<AbstractDocument> Session::getDocument()
{
    return document;
}

QSharedPointer<SessionContext> Session::getSessionContext()
{
    return context;
}

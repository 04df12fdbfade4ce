// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/refusallistener.h"

#include "host/http/httpstatus_p.h"

namespace poshost {

namespace {

/// The innermost listener of the thread.
thread_local RefusalListener* innermost = nullptr;

} // namespace

RefusalListener::RefusalListener() : outer(innermost)
{
    innermost = this;
}

RefusalListener::~RefusalListener()
{
    innermost = outer;
}

void RefusalListener::hear(int status, const QByteArray& body, const QString& contentType)
{
    const bool isRefusal = status >= httpstatus::firstError;
    for (RefusalListener* listener = innermost; listener != nullptr; listener = listener->outer) {
        listener->lastStatus = isRefusal ? status : 0;
        listener->lastBody = isRefusal ? body.left(longestBody) : QByteArray();
        listener->lastType = isRefusal ? contentType : QString();
    }
}

} // namespace poshost

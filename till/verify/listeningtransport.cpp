// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/listeningtransport.h"

#include "till/reason.h"

#include <QElapsedTimer>

namespace till::verify {

ListeningTransport::ListeningTransport(const QUrl& markedAddress)
    : marked(markedAddress), before(MockFactory<RestClient>::mocked)
{
    MockFactory<RestClient>::mocked = this;
}

ListeningTransport::~ListeningTransport()
{
    MockFactory<RestClient>::mocked = before;
}

void ListeningTransport::post(const QUrl& url, const QByteArray& body,
                              const QHash<QString, QString>& headers)
{
    refused = !url.toString().startsWith(marked.toString());
    if (refused) {
        return;
    }
    QElapsedTimer clock;
    clock.start();
    RestClient::post(url, body, headers);
    Reply reply;
    reply.status = getHttpStatusCode();
    reply.body = getResponse();
    reply.trouble = reply.status == 0 ? said(getErrorText()) : QString();
    reply.milliseconds = clock.elapsed();
    heard.append({url, body, reply});
}

int ListeningTransport::getError()
{
    return refused ? 1 : RestClient::getError();
}

} // namespace till::verify

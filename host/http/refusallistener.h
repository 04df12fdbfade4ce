// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QByteArray>
#include <QString>

namespace poshost {

/// Hears what servers write to refusals, for people who search a fault: a plug-in says what is
/// wrong in its own words, and what the server has written is lost with the transport.
///
/// While it lives, the last answer that RestClient::post got on the same thread is kept here if its
/// status is 400 or more. Bound to the thread that makes it; what other threads send is not heard.
/// One inside another one hears the same. Costs nothing and cannot fail.
class HOST_EXPORT RefusalListener
{
public:
    /// The most of a body that is kept, in bytes.
    static constexpr qsizetype longestBody = 64 * 1024;

    /// Listens from now on.
    RefusalListener();
    /// To be destroyed on its thread, the inner ones first.
    ~RefusalListener();
    RefusalListener(const RefusalListener&) = delete;
    RefusalListener& operator=(const RefusalListener&) = delete;

    /// @return the status of the last answer, 0 when none was heard or the last one was no refusal
    int status() const { return lastStatus; }
    /// @return the refusal's body as it came, cut at longestBody; empty without a refusal
    QByteArray body() const { return lastBody; }
    /// @return the refusal's header "Content-Type", empty when it has none
    QString contentType() const { return lastType; }

    /// For transports: an answer has come to this thread.
    /// @param status of the answer, 0 when there was none
    /// @param body of the answer
    /// @param contentType the header of that name; nobody looks at that of another answer than a
    /// refusal
    static void hear(int status, const QByteArray& body, const QString& contentType);

private:
    RefusalListener* const outer;
    int lastStatus = 0;
    QByteArray lastBody;
    QString lastType;
};

} // namespace poshost

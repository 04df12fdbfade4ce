// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/mockfactory.h"
#include "host/core/tr.h"
#include "host/hostexport.h"

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>
#include <QUrl>
#include <atomic>

/// One synchronous HTTP request and its outcome.
///
/// A new object is made for every request; connections and TLS sessions are kept in a process-wide
/// pool behind it, so a second request to the same server opens no new connection, as long as at
/// most sixteen other connections have been used since. No event loop runs while it waits: nothing
/// re-enters the caller. One object belongs to one thread; different objects may work on different
/// threads at the same time.
///
/// Order of calls: setTimeout, post, then the getters. The getters describe the last post; before
/// the first one they answer 0 and empty values.
class HOST_EXPORT RestClient : public QObject
{
    Q_OBJECT
public:
    /// The limit of an exchange where nobody has set one, in seconds. Who reads one from a
    /// configuration takes it for the key that is not there.
    static constexpr int defaultTimeoutSeconds = 10;

    /// A client that has sent nothing; opens no connection.
    RestClient();
    ~RestClient() override;

    /// Sends the body with the headers by HTTP POST and waits for the whole answer. Never throws
    /// and never blocks longer than the time-out, nor longer than what is left of the
    /// OperationBudget that its thread is in; what happened is read with the getters. When nothing
    /// is left of it, or the server has been silent in it before, nothing is sent and it fails at
    /// once as it does without an answer.
    /// @param url an address of http or https
    /// @param body sent as it is
    /// @param headers by their names; those of the transport (length, host) are made here
    virtual void post(const QUrl& url, const QByteArray& body,
                      const QHash<QString, QString>& headers);
    /// 0: an answer with a status below 400 has come whole. Above 0: the transport failed, or the
    /// status is 400 or more.
    virtual int getError();
    /// The answer's HTTP status; 0 when there was none. Stays readable beside an error.
    virtual int getHttpStatusCode();
    /// What went wrong, empty when nothing did.
    virtual tr::Tr getErrorText();
    /// The answer's body, also that of an error status; empty after a transport failure.
    virtual QByteArray getResponse();
    /// @param seconds limit of the whole exchange: name resolution, connecting, sending and
    /// receiving. 0 or less means defaultTimeoutSeconds. That several requests share one limit is
    /// told with an OperationBudget.
    virtual void setTimeout(int seconds);
    /// Looks a header of the answer up.
    /// @param name its name, in whatever case
    /// @return its value, the last one where it is repeated; empty when the answer has none
    virtual QString getResponseHeader(const QString& name);
    /// How often the last post put its request on the wire: 0 when no connection came about, 2 when
    /// a kept connection turned out to be closed and the request was sent again on a new one.
    virtual int getSendCount();

    /// Ends a post that is under way, and every later one of this object, as a transport failure.
    /// May be called from any thread; does not wait. The post returns within about a second.
    void abort();

private:
    void perform(void* handle, const QUrl& url, const QByteArray& body,
                 const QHash<QString, QString>& headers, long milliseconds);
    void fail(int code, const tr::Tr& text);

    std::atomic<bool> aborted = false;
    int timeoutSeconds = 0;
    int error = 0;
    int status = 0;
    int sendCount = 0;
    tr::Tr errorText;
    QByteArray response;
    QByteArray responseHeaders; ///< the lines of the last answer
};

extern template class HOST_EXPORT MockFactory<RestClient>;

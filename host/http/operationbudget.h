// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <chrono>

class QUrl;

namespace poshost {

/// Hears of the requests that an operation waits for, on the operation's thread.
class HOST_EXPORT RequestObserver
{
public:
    virtual ~RequestObserver();
    /// A request is about to be sent.
    /// @param host whom it waits for: the name alone
    /// @param since how long ago the operation's first request began
    /// @param atMost how long this one can take
    virtual void requestBegins(const QString& host, std::chrono::milliseconds since,
                               std::chrono::milliseconds atMost) = 0;
    /// It has ended, however it did.
    virtual void requestEnded() = 0;
};

/// Makes all requests of one operation share one time-out: whoever waits at the till waits for the
/// operation and not for each request by itself.
///
/// A host opens one around whatever it does at one wish of the cashier, for example presenting a
/// card and asking what it is worth. While it lives, RestClient::post on the same thread keeps to
/// it: the time-out of the first request counts from that request's beginning for all of them, and
/// a request that comes when it is over fails as one without an answer, without being sent. Nor is
/// anything sent to a server on which a request of this operation has already waited in vain.
/// RestClient::setTimeout keeps its meaning; of the two limits the shorter one counts.
///
/// Bound to the thread that makes it; what other threads send is not limited. One that is opened
/// inside another one of its thread joins it and does nothing by itself. Opening one costs nothing
/// and cannot fail; without one every request has its own time-out alone.
class HOST_EXPORT OperationBudget
{
public:
    /// @param observer hears of the requests; stays the caller's and must live longer. That of the
    /// outermost operation counts.
    explicit OperationBudget(RequestObserver* observer = nullptr);
    /// Ends the operation. To be destroyed on its thread, the inner ones first.
    ~OperationBudget();
    OperationBudget(const OperationBudget&) = delete;
    OperationBudget& operator=(const OperationBudget&) = delete;

private:
    friend class BudgetedRequest;

    RequestObserver* const observer;
    QElapsedTimer sinceFirst; ///< invalid before the first request
    std::chrono::milliseconds limit{0};
    QStringList silentServers;
};

/// One request as part of the operation that its thread is in, if it is in one. For transports.
class HOST_EXPORT BudgetedRequest
{
public:
    /// The request begins.
    /// @param url where it goes; servers are told apart by scheme, name and port
    /// @param ownLimit its own time-out
    BudgetedRequest(const QUrl& url, std::chrono::milliseconds ownLimit);
    /// It has ended.
    ~BudgetedRequest();
    BudgetedRequest(const BudgetedRequest&) = delete;
    BudgetedRequest& operator=(const BudgetedRequest&) = delete;

    /// @return how long it may take; 0: it is not to be sent
    std::chrono::milliseconds allowed() const { return time; }
    /// To be called when the time-out has ended it.
    void timedOut();

private:
    OperationBudget* const operation; ///< null outside of any
    const QString server;
    std::chrono::milliseconds time;
};

} // namespace poshost

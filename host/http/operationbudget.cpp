// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/http/operationbudget.h"

#include <QUrl>
#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

/// By how much the clock of the network's library may run ahead of ours, and more.
constexpr milliseconds clockDifference(10);

/// The outermost operation of the thread.
thread_local OperationBudget* current = nullptr;

QString serverOf(const QUrl& url)
{
    return u"%1://%2:%3"_s.arg(url.scheme(), url.host()).arg(url.port());
}

} // namespace

RequestObserver::~RequestObserver() = default;

OperationBudget::OperationBudget(RequestObserver* given) : observer(given)
{
    if (current == nullptr) {
        current = this;
    }
}

OperationBudget::~OperationBudget()
{
    if (current == this) {
        current = nullptr;
    }
}

BudgetedRequest::BudgetedRequest(const QUrl& url, milliseconds ownLimit)
    : operation(current), server(operation == nullptr ? QString() : serverOf(url)), time(ownLimit)
{
    if (operation == nullptr) {
        return;
    }
    if (!operation->sinceFirst.isValid()) {
        operation->sinceFirst.start();
        operation->limit = ownLimit;
    }
    const milliseconds since(operation->sinceFirst.elapsed());
    time = operation->silentServers.contains(server)
               ? milliseconds(0)
               : std::clamp(operation->limit - since, milliseconds(0), ownLimit);
    if (operation->observer != nullptr && time > milliseconds(0)) {
        operation->observer->requestBegins(url.host(), since, time);
    }
}

BudgetedRequest::~BudgetedRequest()
{
    if (operation != nullptr && operation->observer != nullptr && time > milliseconds(0)) {
        operation->observer->requestEnded();
    }
}

void BudgetedRequest::timedOut()
{
    if (operation != nullptr) {
        operation->silentServers.append(server);
        // one that was given all that was left ends a millisecond too early now and then; what is
        // left by that is nothing to ask another server in
        const milliseconds since(operation->sinceFirst.elapsed());
        if (operation->limit - since < clockDifference) {
            operation->limit = milliseconds(0);
        }
    }
}

} // namespace poshost

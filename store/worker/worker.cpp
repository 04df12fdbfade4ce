// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/worker/worker.h"

#include "store/worker/hand.h"

#include <QScopeGuard>

#include <thread>

namespace orvastore {

using poshost::Message;

Worker::Worker(const StoreSettings& settings, const Manner& given, const Complaint& listener)
    : manner(given), complaint(listener),
      first(std::make_unique<Hand>(*this, Hand::Kind::First, settings)),
      ahead(std::make_unique<Hand>(*this, Hand::Kind::Ahead, settings))
{}

Worker::~Worker() = default;

/// @param what empty: all is well again
void Worker::complain(const Message& what)
{
    const std::lock_guard guard(mutex);
    if (complaint && !what.isEmpty() && !(what == lastComplaint)) {
        complaint(what);
    }
    lastComplaint = what;
}

void Worker::count(const std::function<void(WorkerReport&)>& add)
{
    const std::lock_guard guard(mutex);
    add(done);
}

void Worker::run()
{
    std::thread second([this] { ahead->run(*first); });
    const auto joined = qScopeGuard([&] {
        isDone = true;
        second.join();
    });
    first->run(*ahead);
}

} // namespace orvastore

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/waitnotice.h"

#include "till/screen/output.h"
#include "till/text.h"

#include <algorithm>
#include <system_error>

using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace till {
namespace {

/// Until then nobody wonders.
constexpr milliseconds patience = 1s;

} // namespace

WaitNotice::~WaitNotice()
{
    WaitNotice::requestEnded();
}

void WaitNotice::requestBegins(const QString& host, milliseconds since, milliseconds atMost)
{
    if (!out.canRedraw() || out.isQuiet()) {
        return;
    }
    const Clock::time_point now = Clock::now();
    const Clock::time_point first = now + std::max(patience - since, 0ms);
    ended = false;
    try {
        thread = std::thread([=, this] { tell(host, first, now + atMost); });
    } catch (const std::system_error&) {
        // the request matters more than the notice of it
    }
}

void WaitNotice::requestEnded()
{
    if (!thread.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(mutex);
        ended = true;
    }
    wake.notify_all();
    thread.join();
}

void WaitNotice::tell(const QString& host, Clock::time_point first, Clock::time_point end)
{
    bool isDrawn = false;
    std::unique_lock lock(mutex);
    for (auto next = first; !wake.wait_until(lock, next, [this] { return ended; }); next += 1s) {
        draw(host, end - next);
        isDrawn = true;
    }
    if (isDrawn) {
        out.draw({});
    }
}

void WaitNotice::draw(const QString& host, Clock::duration left)
{
    const auto seconds = std::max(std::chrono::ceil<std::chrono::seconds>(left), 0s).count();
    const QString text = Text::tr("Waiting for %1, %2 s at most").arg(host).arg(seconds);
    // the last column stays free: some terminals go to the next line there
    out.draw({{text.left(std::max(out.columns() - 1, 0))}});
}

} // namespace till

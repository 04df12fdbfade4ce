// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// orva-costs PART TIMES: closing a check of 100 lines or delivering a message so many times, or the
// floor of it, for callgrind, which counts only that, and for strace.

#include "bench/closingscene.h"
#include "bench/drainscene.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <functional>
#include <map>
#include <stdexcept>
#include <valgrind/callgrind.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int lines = 100;

void count(const std::function<void()>& work)
{
    CALLGRIND_START_INSTRUMENTATION;
    work();
    CALLGRIND_STOP_INSTRUMENTATION;
}

void closing(int times)
{
    bench::ClosingScene scene(lines);
    scene.prepare();
    scene.close(); // what is made once a process is not counted
    for (int turn = 0; turn < times; ++turn) {
        scene.prepare();
        count([&] { scene.close(); });
    }
}

void closingFloor(int times)
{
    bench::ClosingScene scene(lines);
    scene.prepare();
    scene.close();
    scene.insert();
    count([&] {
        for (int turn = 0; turn < times; ++turn) {
            scene.insert();
        }
    });
}

/// A queue of two messages first, for what is made once a process.
void draining(int times)
{
    bench::DrainScene scene;
    bool isDrained = true;
    for (const int messages : {2, times}) {
        scene.fill(messages);
        const auto drain = [&] { isDrained = scene.drain(messages) && isDrained; };
        messages == times ? count(drain) : drain();
    }
    if (!isDrained) {
        throw std::runtime_error("the queue was not drained");
    }
}

void drainingFloor(int times)
{
    bench::DrainScene scene;
    scene.fill(1);
    scene.post(2);
    count([&] { scene.post(times); });
}

} // namespace

int main(int argc, char** argv)
{
    const std::map<QString, void (*)(int)> parts{{u"closing"_s, closing},
                                                 {u"closing-floor"_s, closingFloor},
                                                 {u"draining"_s, draining},
                                                 {u"draining-floor"_s, drainingFloor}};
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(u"*.debug=false\n*.info=false"_s);
    const QStringList arguments = QCoreApplication::arguments();
    const auto part = parts.find(arguments.value(1));
    if (part == parts.end()) {
        std::fputs("orva-costs closing|closing-floor|draining|draining-floor TIMES\n", stderr);
        return 2;
    }
    part->second(arguments.value(2).toInt());
    return 0;
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Runs every reader and builder, and a whole request, on a check of 1,000 lines and on one of
// 10,000, each as a section of its own of callgrind's output. The lines of the two checks cost the
// same number of instructions where nothing grows faster than the check.

#include "bench/parts.h"
#include "bench/wholerequest.h"
#include "bench/workplace.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <valgrind/callgrind.h>

using namespace Qt::StringLiterals;

namespace {

/// What a request cannot do without.
class FloorPart : public bench::Part
{
public:
    explicit FloorPart(int lines) : floor(lines) {}

    void run() override { floor.run(); }

private:
    bench::RequestFloor floor;
};

void countInstructions(const bench::NamedPart& named, int lines)
{
    const std::unique_ptr<bench::Part> part = named.make(lines);
    part->run(); // what is made once a process is not counted
    part->reset();
    const std::string label = named.name + "/" + std::to_string(lines);
    CALLGRIND_START_INSTRUMENTATION;
    part->run();
    CALLGRIND_STOP_INSTRUMENTATION;
    CALLGRIND_DUMP_STATS_AT(label.c_str());
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(u"*.debug=false\n*.info=false"_s);
    const QStringList wanted = QCoreApplication::arguments().mid(1);
    if (RUNNING_ON_VALGRIND == 0) {
        std::fputs("orva-instructions: run it under valgrind --tool=callgrind\n", stderr);
        return 2;
    }
    const bench::Workplace workplace;
    std::vector<bench::NamedPart> parts = bench::allParts();
    parts.push_back(
        {"request floor", [](int lines) { return std::make_unique<FloorPart>(lines); }});
    parts.push_back(
        {"request", [](int lines) { return std::make_unique<bench::WholeRequest>(lines); }});
    for (const bench::NamedPart& part : parts) {
        if (!wanted.isEmpty() && !wanted.contains(QString::fromStdString(part.name))) {
            continue;
        }
        for (const int lines : {1'000, 10'000}) {
            countInstructions(part, lines);
        }
    }
    return 0;
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/programcost.h"
#include "bench/suites.h"
#include "bench/table.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    if (const auto launched = bench::ranAsLauncher(argc, argv)) {
        return *launched;
    }
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false"));
    bench::addLoadingRows(); // first: a row that keeps the plug-in loaded would make it free
    bench::addRequestRows();
    bench::addAllocationRows();
    bench::addGrowthRows();
    bench::addLoopbackRows();
    bench::addConnectionRows();
    bench::addClosingRows();
    bench::addDrainRows();
    bench::addAnswerRows();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    bench::Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return table.isEveryRowMet() ? 0 : 1;
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <benchmark/benchmark.h>
#include <ostream>
#include <string>
#include <vector>

namespace bench {

/// Gathers the medians of all rows and prints them as one table at the end.
class Table : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

    bool isEveryRowMet() const { return everyRowMet; }

private:
    std::vector<std::string> rows;
    bool everyRowMet = true;
};

} // namespace bench

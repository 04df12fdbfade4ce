// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/table.h"

#include <array>
#include <cstdio>

namespace bench {

namespace {

double counter(const benchmark::BenchmarkReporter::Run& run, const char* name)
{
    const auto found = run.counters.find(name);
    return found == run.counters.end() ? 0 : found->second.value;
}

/// Seconds in the unit that suits them; what is not a time has none.
std::string amount(double value, bool isTime)
{
    std::array<char, 32> text{};
    if (!isTime) {
        std::snprintf(text.data(), text.size(), "%.2f", value);
        return text.data();
    }
    const char* const format = value >= 1 ? "%.2f s" : value >= 1e-3 ? "%.2f ms" : "%.2f us";
    const double scale = value >= 1 ? 1 : value >= 1e-3 ? 1e3 : 1e6;
    std::snprintf(text.data(), text.size(), format, value * scale);
    return text.data();
}

} // namespace

bool Table::ReportContext(const Context&)
{
    return true;
}

void Table::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.error_occurred) {
            everyRowMet = false;
            rows.push_back("| " + run.benchmark_name() + " | " + run.error_message +
                           " | | | | no |");
        }
        if (run.aggregate_name != "median") {
            continue;
        }
        const double figure = counter(run, "figure");
        const double limit = counter(run, "limit");
        const bool isLeast = counter(run, "least") > 0;
        const bool isTime = counter(run, "time") > 0;
        const bool isMet = isLeast ? figure >= limit : figure <= limit;
        everyRowMet = everyRowMet && isMet;
        std::array<char, 256> text{};
        const std::string name = run.run_name.function_name;
        std::snprintf(text.data(), text.size(), "| %-46s | %10s | %10s | %7.3f | %s %g | %s |",
                      name.c_str(), amount(counter(run, "floor"), isTime).c_str(),
                      amount(counter(run, "subject"), isTime).c_str(), figure,
                      isLeast ? "at least" : "at most", limit, isMet ? "yes" : "no");
        rows.emplace_back(text.data());
        GetErrorStream() << rows.back() << std::endl;
    }
}

void Table::Finalize()
{
    GetOutputStream() << "| Row | Floor | Subject | Figure | To reach | Met |\n"
                      << "|---|---|---|---|---|---|\n";
    for (const std::string& row : rows) {
        GetOutputStream() << row << '\n';
    }
    GetOutputStream().flush();
}

} // namespace bench

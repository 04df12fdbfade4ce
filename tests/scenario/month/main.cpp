// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/month/measured.h"
#include "tests/scenario/month/shop.h"
#include "tests/scenario/month/verdict.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

void print(const month::Drained& drained)
{
    std::printf("%d confirmations (%d of returns): queued in %.1f s, delivered in %.1f s with %lld "
                "requests, peak memory %lld KiB, of the selling till %lld KiB\n",
                drained.confirmations, drained.returns, drained.fillSeconds, drained.drainSeconds,
                static_cast<long long>(drained.requests),
                static_cast<long long>(drained.peakKibibytes),
                static_cast<long long>(drained.sellingPeakKibibytes));
    std::fflush(stdout);
}

month::Drained runOne(int confirmations, quint64 seed)
{
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/orva-month-XXXXXX"));
    if (!folder.isValid()) {
        throw std::runtime_error(folder.errorString().toStdString());
    }
    const month::Drained drained = month::Shop(folder.path(), seed).run(confirmations);
    print(drained);
    return drained;
}

int judge(const month::Drained& small, const month::Drained& large, bool anyMemory)
{
    constexpr qsizetype shown = 20;
    QStringList wrong = small.complaints + large.complaints;
    if (!anyMemory) {
        wrong += month::memoryComplaints(small.peakKibibytes, large.peakKibibytes);
        wrong += month::sellingComplaints(
            std::max(small.sellingPeakKibibytes, large.sellingPeakKibibytes));
    }
    for (const QString& complaint : wrong.mid(0, shown)) {
        std::fprintf(stderr, "WRONG: %s\n", qUtf8Printable(complaint));
    }
    if (!wrong.isEmpty()) {
        std::fprintf(stderr, "%lld things are wrong\n", static_cast<long long>(wrong.size()));
        return 1;
    }
    std::printf("Lost 0, doubled 0, order kept, books equal; memory %+.1f %% for %.0f times the "
                "queue (%s %+lld %%, and less than %lld KiB)\n",
                100.0 * static_cast<double>(large.peakKibibytes) /
                        static_cast<double>(small.peakKibibytes) -
                    100.0,
                static_cast<double>(large.confirmations) / small.confirmations,
                anyMemory ? "not judged; otherwise allowed" : "allowed",
                static_cast<long long>(month::mostGrowthPercent),
                static_cast<long long>(month::mostMemory));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    bool asked = false;
    const int measured = month::measureIfAsked(argc, argv, asked);
    if (asked) {
        return measured;
    }
    const QCoreApplication application(argc, argv);
    quint64 seed = 1;
    int small = 5'000;
    int large = 50'000;
    CLI::App line("A month without the server: so many confirmations are queued by a working till "
                  "and then delivered by another process.");
    line.add_option("--seed", seed, "what is sold follows from it")->capture_default_str();
    line.add_option("--small", small, "confirmations of the short queue")
        ->check(CLI::Range(10, 1'000'000))
        ->capture_default_str();
    line.add_option("--large", large, "confirmations of the long one")
        ->check(CLI::Range(10, 1'000'000))
        ->capture_default_str();
    bool anyMemory = false;
    line.add_flag("--any-memory", anyMemory,
                  "print the memory without judging it: for programs under a sanitizer");
    CLI11_PARSE(line, argc, argv);
    std::printf("Seed: %llu\n", static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    try {
        const month::Drained first = runOne(small, seed);
        return judge(first, runOne(large, seed + 1), anyMemory);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orva-month: %s\n", error.what());
        return 1;
    }
}

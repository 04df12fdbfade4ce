// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/faults/figures.h"

#include "tests/scenario/faults/faultytill.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace {

constexpr quint64 usualSeed = 20260302;

class Printing : public ::testing::Environment
{
public:
    void TearDown() override { Figures::instance().print(); }
};

/// GoogleTest owns it.
::testing::Environment* const printing = ::testing::AddGlobalTestEnvironment(new Printing);

} // namespace

Figures& Figures::instance()
{
    static Figures figures;
    return figures;
}

Figures::Figures()
{
    bool isNumber = false;
    const quint64 wished = qEnvironmentVariable("ORVA_FAULT_SEED").toULongLong(&isNumber);
    runSeed = isNumber ? wished : usualSeed;
}

void Figures::noteCall(const QString& name, qint64 milliseconds)
{
    ++calls;
    if (milliseconds > longest) {
        longest = milliseconds;
        longestName = name;
    }
}

void Figures::print() const
{
    std::printf("Pairs of operation and fault: %d; calls measured: %d; longest: %lld ms, that is "
                "%lld ms over the time-out (%s); ORVA_FAULT_SEED=%llu\n",
                pairs, calls, static_cast<long long>(longest),
                static_cast<long long>(longest - FaultyTill::timeoutMilliseconds),
                qPrintable(longestName), static_cast<unsigned long long>(runSeed));
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/workerthread.h"

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

namespace simulator {
namespace {

TEST(WorkerThread, returnsWhatTheWorkReturns)
{
    WorkerThread worker;
    EXPECT_EQ(worker.run([] { return 7; }), 7);
}

TEST(WorkerThread, throwsWhatTheWorkThrows)
{
    WorkerThread worker;
    EXPECT_THROW(worker.run([] { throw std::out_of_range("x"); }), std::out_of_range);
    EXPECT_EQ(worker.run([] { return 1; }), 1);
}

TEST(WorkerThread, doesAllInOneThreadOneAfterTheOther)
{
    WorkerThread worker;
    const std::thread::id id = worker.run([] { return std::this_thread::get_id(); });
    EXPECT_NE(id, std::this_thread::get_id());
    int unguarded = 0; // a race here is what a thread sanitizer would report
    std::vector<std::thread> callers;
    for (int i = 0; i < 8; ++i) {
        callers.emplace_back([&] {
            for (int j = 0; j < 1000; ++j) {
                worker.run([&] { unguarded += std::this_thread::get_id() == id ? 1 : 0; });
            }
        });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
    EXPECT_EQ(worker.run([&] { return unguarded; }), 8000);
}

} // namespace
} // namespace simulator

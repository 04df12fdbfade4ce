// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <cstdint>

// What libFuzzer calls and offers.
extern "C" {
int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size);
size_t LLVMFuzzerCustomMutator(std::uint8_t* data, size_t size, size_t maximum, unsigned seed);
size_t LLVMFuzzerMutate(std::uint8_t* data, size_t size, size_t maximum);
}

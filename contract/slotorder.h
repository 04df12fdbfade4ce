// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <type_traits>
#include <vector>

/// Where virtual operations stand in their class's table, read from pointers to members.
///
/// In the Itanium C++ ABI such a pointer is two words: for a virtual operation the first is 1 + the
/// entry's byte offset in the table. On ARM, where the lowest bit of an address has a meaning, the
/// first word is the offset itself and the lowest bit of the second says "virtual".
namespace contract {

/// The slot of the operation, or nothing when it is not virtual. A virtual destructor takes two
/// slots, but no pointer to it can be formed.
template <typename Operation>
std::optional<std::size_t> slotOf(Operation operation)
{
    static_assert(std::is_member_function_pointer_v<Operation>);
    std::array<std::ptrdiff_t, 2> words{};
    static_assert(sizeof(words) == sizeof(operation));
    std::memcpy(words.data(), &operation, sizeof(operation));
#if defined(__aarch64__) || defined(__arm__)
    const bool isVirtual = (words[1] & 1) != 0;
    const std::ptrdiff_t offset = words[0];
#else
    const bool isVirtual = (words[0] & 1) != 0;
    const std::ptrdiff_t offset = words[0] - 1;
#endif
    if (!isVirtual) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(offset) / sizeof(void*);
}

/// The slots of several operations, in the order given.
template <typename... Operations>
std::vector<std::optional<std::size_t>> slotsOf(Operations... operations)
{
    return {slotOf(operations)...};
}

/// The slots that follow one another from the first one on; what slotsOf must answer for
/// operations listed in the order of their table.
inline std::vector<std::optional<std::size_t>> consecutiveSlots(std::size_t first,
                                                                std::size_t count)
{
    std::vector<std::optional<std::size_t>> slots;
    for (std::size_t i = 0; i < count; ++i) {
        slots.emplace_back(first + i);
    }
    return slots;
}

} // namespace contract

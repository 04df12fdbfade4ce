// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace Log4Qt {

class Level
{
public:
    enum Value
    {
        NULL_INT = 0,
        DEBUG_INT = 96,
        INFO_INT = 128,
        ERROR_INT = 182,
        OFF_INT = 255
    };

    Level(Value level = NULL_INT) : value(level) {} // NOLINT: as in the library

    int toInt() const { return value; }

private:
    Value value;
};

inline bool operator==(const Level& left, const Level& right)
{
    return left.toInt() == right.toInt();
}
inline bool operator<(const Level& left, const Level& right)
{
    return left.toInt() < right.toInt();
}

} // namespace Log4Qt

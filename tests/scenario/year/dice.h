// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QtGlobal>

#include <random>

namespace year {

/// Chance that follows from a seed alone, the same with every standard library.
class Dice
{
public:
    explicit Dice(quint64 seed) : generator(seed) {}

    quint64 draw() { return generator(); }
    /// A whole number from least to most, both included.
    qint64 between(qint64 least, qint64 most)
    {
        return least + static_cast<qint64>(generator() % static_cast<quint64>(most - least + 1));
    }
    bool chance(int percent) { return between(1, 100) <= percent; }
    template <typename T>
    const T& pick(const QList<T>& list)
    {
        return list.at(between(0, list.size() - 1));
    }

private:
    std::mt19937_64 generator;
};

} // namespace year

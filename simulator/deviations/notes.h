// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <mutex>

namespace simulator {

/// What a deviating server remembers from one request to the next, by names of its choice. Gone
/// with the program. May be used from several threads at once.
class Notes
{
public:
    /// Whether nothing was noted under the name so far; something is from now on.
    bool isFirst(const QString& name) { return count(name, 1) == 1; }

    /// Adds to the number under the name and returns it.
    int count(const QString& name, int added)
    {
        const std::scoped_lock lock(mutex);
        return numbers[name] += added;
    }

    /// The bytes under the name; empty for none.
    [[nodiscard]] QByteArray kept(const QString& name) const
    {
        const std::scoped_lock lock(mutex);
        return texts.value(name);
    }

    void keep(const QString& name, const QByteArray& bytes)
    {
        const std::scoped_lock lock(mutex);
        texts.insert(name, bytes);
    }

private:
    mutable std::mutex mutex; // guards what follows
    QHash<QString, int> numbers;
    QHash<QString, QByteArray> texts;
};

} // namespace simulator

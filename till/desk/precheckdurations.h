// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <array>
#include <chrono>

namespace till {

/// How long the cashier has waited for the loyalty system's answers about checks, counted in fixed
/// classes. Kept in a small file beside the database and not in it, where each count would be a
/// sync of the disk that a sale waits for: this costs some microseconds. A power cut may lose the
/// last counts; a file that is torn begins anew.
class PrecheckDurations
{
public:
    /// Upper ends of the classes, in seconds; a last class has no end.
    static constexpr std::array<double, 8> ends{0.1, 0.25, 0.5, 1, 2, 3, 5, 10};

    struct Counts
    {
        std::array<quint64, ends.size() + 1> inClass{};
        quint64 microseconds = 0; ///< of all together
    };

    /// Touches nothing yet.
    explicit PrecheckDurations(const QString& databaseFile);

    /// Counts one. Never throws and waits for nobody: what cannot be written at once is not
    /// counted.
    void add(std::chrono::microseconds duration) const;
    /// @return nothing but zeros where there is no sound file
    Counts counts() const;

private:
    const QString file;
};

} // namespace till

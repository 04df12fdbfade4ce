// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/rules/rules.h"

#include <functional>
#include <mutex>

namespace simulator {

/// A file of rules that is followed while it changes, together with the files that its answers are
/// read from. Whoever writes it gets the new rules with the next look; what is broken changes
/// nothing. An empty file counts as one that is just being written.
class RulesFile
{
public:
    /// Takes the rules that a change brought.
    using Apply = std::function<void(const Rules&)>;
    /// Learns what is wrong with a change: one sentence with file, line and key, said once.
    using Complain = std::function<void(const QString&)>;

    /// Reads the file the first time; throws ConfigError.
    explicit RulesFile(const QString& rulesPath);

    /// The rules as they were read the first time.
    [[nodiscard]] const Rules& first() const { return firstRules; }

    /// Looks whether anything has changed since the last look; calls one of the two functions, or
    /// neither. May be called from several threads at once; the calls of apply do not overlap.
    void look(const Apply& apply, const Complain& complain);

private:
    [[nodiscard]] QByteArray content(const QStringList& further) const;

    const QString path;
    const Rules firstRules;
    std::mutex mutex; // guards what follows
    QStringList answerFiles;
    QByteArray known;
    QString complaint; ///< the last one, while it is not mended
};

} // namespace simulator

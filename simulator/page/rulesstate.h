// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <atomic>
#include <mutex>

namespace simulator {

/// What has become of the file of rules, to be shown. All operations may be called from several
/// threads at once.
class RulesState
{
public:
    /// file: as the command line names it; empty for the built-in rules
    explicit RulesState(QString rulesFile);

    /// Notes that the file as it is now is followed.
    void follow();
    /// Notes that it is not, and why: one sentence with file, line and key.
    void refuse(const QString& why);

    /// Grows with every note.
    [[nodiscard]] int version() const { return notes; }

    /// The file's name and its text as it is now, whether that is followed, and if not why and in
    /// which line (0 for none) as a JSON object.
    [[nodiscard]] QByteArray json() const;

private:
    const QString file;
    std::atomic<int> notes = 0;
    mutable std::mutex mutex; // guards what follows
    QString complaint;
};

} // namespace simulator

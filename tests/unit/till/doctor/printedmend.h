// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tests {

/// What a report tells to do, read from what is printed: nothing else is known of it here.
class PrintedMend
{
public:
    /// @param report with one mend in it
    explicit PrintedMend(const QString& report);

    bool isCommand() const { return kind == Kind::Command; }
    bool isLine() const { return kind == Kind::Line; }
    /// After it has run.
    bool leftSomethingRunning() const { return leftRunning > 0; }
    QString text() const { return lines.join(u'\n'); }

    /// Pastes it into a shell that stands in another folder and has the built till in its path;
    /// what it leaves running ends with this object. The shell's locale and rules of logging become
    /// this process's.
    void runAsPrinted(const QByteArray& input) const;
    /// Puts the lines where it says, as somebody with an editor does.
    void putIntoFile() const;

    ~PrintedMend();
    PrintedMend(const PrintedMend&) = delete;
    PrintedMend& operator=(const PrintedMend&) = delete;

private:
    enum class Kind
    {
        Command,
        Line,
        Words,
    };

    Kind kind = Kind::Words;
    QStringList lines;
    mutable qint64 leftRunning = 0;
};

} // namespace tests

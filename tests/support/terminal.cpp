// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/terminal.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

RunResult runOnTerminal(const QString& file, const QStringList& arguments, const QString& folder,
                        int columns, const QByteArray& typed, const QByteArray& prompt)
{
    std::vector<QByteArray> words{file.toUtf8()};
    for (const QString& argument : arguments) {
        words.push_back(argument.toUtf8());
    }
    std::vector<char*> pointers;
    for (QByteArray& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    const QByteArray where = folder.toUtf8();
    int terminal = -1;
    const winsize size{25, static_cast<unsigned short>(columns), 0, 0};
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        const bool isThere = ::chdir(where.constData()) == 0;
        isThere&& ::execv(pointers.front(), pointers.data());
        ::_exit(127);
    }
    QByteArray output;
    bool isTyped = false;
    char buffer[4096];
    // ends with an error as soon as nobody has the terminal open any more
    for (ssize_t count = 0; count >= 0; count = ::read(terminal, buffer, sizeof buffer)) {
        output.append(buffer, count);
        if (!isTyped && output.contains(prompt)) {
            isTyped = true;
            EXPECT_EQ(::write(terminal, typed.constData(), static_cast<size_t>(typed.size())),
                      typed.size());
        }
    }
    ::close(terminal);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, QString::fromUtf8(output)};
}

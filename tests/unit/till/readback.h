// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

namespace tests {

/// A stream and what was written to it.
class ReadBack
{
public:
    /// What was written since the last call. A terminal hands it on when it likes, so a mark is
    /// sent behind it.
    QString text() const
    {
        constexpr char mark = '\001';
        std::fputc(mark, stream);
        std::fflush(stream);
        QByteArray bytes;
        for (char byte = 0; ::read(readEnd, &byte, 1) == 1 && byte != mark;) {
            bytes.append(byte);
        }
        return QString::fromUtf8(bytes);
    }
    /// What is written from now on up to these bytes, them included.
    QString textUpTo(const QByteArray& end) const
    {
        QByteArray bytes;
        for (char byte = 0; !bytes.endsWith(end) && ::read(readEnd, &byte, 1) == 1;) {
            bytes.append(byte);
        }
        return QString::fromUtf8(bytes);
    }
    std::FILE* stream = nullptr;

protected:
    ReadBack() = default;
    ~ReadBack()
    {
        std::fclose(stream);
        ::close(readEnd);
    }
    void open(int writeEnd) { stream = ::fdopen(writeEnd, "w"); }
    int readEnd = -1;
};

struct Terminal : ReadBack
{
    explicit Terminal(unsigned short columns)
    {
        termios raw{};
        ::cfmakeraw(&raw);
        const winsize size{25, columns, 0, 0};
        int writeEnd = -1;
        EXPECT_EQ(::openpty(&readEnd, &writeEnd, nullptr, &raw, &size), 0);
        open(writeEnd);
    }
};

struct Pipe : ReadBack
{
    Pipe()
    {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        readEnd = ends[0];
        open(ends[1]);
    }
};

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/streams.h"

#include "console/printable.h"

#include <QDebug>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace console {
namespace {

QtMessageHandler formerHandler = nullptr;

void writePrintable(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    formerHandler(type, context, printable::line(text));
}

} // namespace

void streams::prepare()
{
    std::signal(SIGPIPE, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF) {
            // for reading only: writing to what was closed stays an error
            static_cast<void>(::open("/dev/null", O_RDONLY | O_NOCTTY));
        }
    }
}

void streams::keepLogPrintable()
{
    formerHandler = qInstallMessageHandler(writePrintable);
}

} // namespace console

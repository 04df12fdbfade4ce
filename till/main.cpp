// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/language.h"
#include "console/streams.h"
#include "till/commands/commandline.h"
#include "till/commands/program.h"
#include "till/doctor/libraryconfig.h"
#include "till/failure.h"
#include "till/screen/output.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Errors are always written; QT_LOGGING_RULES and QT_MESSAGE_PATTERN win over what is set here.
void setUpLogging(bool verbose)
{
    qSetMessagePattern(u"%{time hh:mm:ss.zzz} %{category} %{type}: %{message}"_s);
    QLoggingCategory::setFilterRules(
        u"orva.debug=%1\norva.info=%1\nposhost.*.debug=%1\nposhost.*.info=%1"_s.arg(
            verbose ? u"true"_s : u"false"_s));
}

} // namespace

int main(int argc, char** argv)
{
    console::streams::prepare();
    const QCoreApplication application(argc, argv);
    console::speakUsersLanguage();
    console::streams::keepLogPrintable();
    till::Output out(stdout);
    till::Output errors(stderr);
    till::Options options;
    try {
        if (const auto exitCode = till::readCommandLine(argc, argv, options)) {
            return *exitCode;
        }
    } catch (const till::Failure& failure) {
        errors.failure(failure.text());
        return int(failure.exitCode());
    }
    setUpLogging(options.verbose);
    // they look and try beside a till at work, whose log they must leave alone
    if (options.command == till::Command::Doctor || options.command == till::Command::Init ||
        options.command == till::Command::LogReplay || options.command == till::Command::Support ||
        options.command == till::Command::Verify) {
        till::doctor::keepLibraryUnconfigured(argv);
    }
    return int(till::Program(options, out, errors).run());
}

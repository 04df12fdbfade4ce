// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/exitcode.h"

#include <QString>

#include <stdexcept>

namespace till {

/// Something that could not be done, told in one sentence: what happened, where, what to do.
class Failure : public std::runtime_error
{
public:
    explicit Failure(const QString& sentence, ExitCode exitCode = ExitCode::Failed)
        : std::runtime_error(sentence.toStdString()), code(exitCode)
    {}

    QString text() const { return QString::fromUtf8(what()); }
    ExitCode exitCode() const { return code; }

private:
    ExitCode code;
};

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "till/exitcode.h"

#include <QString>
#include <QStringList>

namespace till {

/// What the till prints, with its words for what went well, what is to be noted and what failed.
class Output : public console::Output
{
public:
    using console::Output::Output;

    /// A line that only says that something was done; not written with --quiet.
    void done(const QString& text);
    /// A line "note: …" for each.
    void notes(const QStringList& notices);
    /// A line "orva-till: …" about what went wrong.
    void failure(const QString& sentence);
    /// Tells of what could not be written to another output.
    /// @param done what was done all the same, a sentence; or nothing
    /// @return the code that the command ends with
    ExitCode tellTrouble(const console::Output& other, ExitCode code, const QString& done = {});

    /// Leaves out what done() says, and progress.
    void setQuiet(bool isQuiet) { quiet = isQuiet; }
    bool isQuiet() const { return quiet; }

private:
    bool quiet = false;
};

} // namespace till

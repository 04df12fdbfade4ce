// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/mend.h"

#include <QString>

namespace till::doctor {

enum class Mark
{
    Ok,
    Warning, ///< works, but somebody should look at it
    Fails,
    Skipped, ///< there was nothing to check, or another check must succeed first
};

/// What a check has found.
struct Finding
{
    Mark mark = Mark::Ok;
    QString text; ///< what was found, a sentence or a value; never a secret
    Mend mend;    ///< what puts it right: with a warning and a failure, and only there
    /// Whether what builds on this check cannot be done.
    bool blocks = false;

    static Finding ok(const QString& text) { return {Mark::Ok, text, {}, false}; }
    static Finding warning(const QString& text, const Mend& mend)
    {
        return {Mark::Warning, text, mend, false};
    }
    static Finding fails(const QString& text, const Mend& mend)
    {
        return {Mark::Fails, text, mend, true};
    }
    /// There is nothing to check, and what builds on it goes on.
    static Finding notNeeded(const QString& text) { return {Mark::Skipped, text, {}, false}; }
    /// It cannot be checked, and neither can what builds on it.
    static Finding notDone(const QString& text) { return {Mark::Skipped, text, {}, true}; }
};

} // namespace till::doctor

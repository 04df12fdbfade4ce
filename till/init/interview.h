// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/init/settings.h"

#include <QStringList>

#include <functional>
#include <iosfwd>

namespace till {

class Output;

namespace init {

/// Asks for the settings, one after the other: a person at a terminal, who sees no secret on it and
/// may try again, or a script, whose lines are the answers in the same order.
class Interview
{
public:
    /// What is wrong with the answers so far, a sentence; empty when nothing is. May put them
    /// right.
    using Trial = std::function<QString(Settings&)>;

    /// @param isPerson whether the answers come from a terminal
    /// @param prompts where the questions go
    Interview(std::istream& source, bool isPerson, Output& prompts);

    /// Asks all questions.
    /// @param tryAddress tried as soon as the address is known
    /// @param tryCredentials tried when all is known; a person is then asked for user, password and
    /// key again
    /// @throws Failure when an answer is missing, or a script's is wrong
    Settings ask(const Trial& tryAddress, const Trial& tryCredentials);

private:
    struct Question;

    QString answerTo(const Question& question);
    QString read(const Question& question);
    /// Asks until there is nothing wrong with the answers.
    void askUntilRight(Settings& settings, const QList<Question>& questions, const Trial& trial);

    std::istream& input;
    const bool person;
    Output& output;
};

} // namespace init

} // namespace till

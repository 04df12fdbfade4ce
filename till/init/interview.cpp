// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/init/interview.h"

#include "till/failure.h"
#include "till/screen/output.h"
#include "till/text.h"

#include <csignal>
#include <istream>
#include <optional>
#include <string>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::init {
namespace {

/// What is typed is not shown while this lives. A person who then stops the program gets the
/// terminal back as it was: the signal ends the reading and nothing else.
class Silence
{
public:
    Silence()
    {
        struct sigaction ends
        {};
        ends.sa_handler = [](int) {};
        ::sigaction(SIGINT, &ends, &formerAction);
        ::tcgetattr(STDIN_FILENO, &former);
        termios silent = former;
        silent.c_lflag &= ~tcflag_t(ECHO);
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~Silence()
    {
        ::tcsetattr(STDIN_FILENO, TCSADRAIN, &former);
        ::sigaction(SIGINT, &formerAction, nullptr);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    termios former{};
    struct sigaction formerAction
    {};
};

} // namespace

struct Interview::Question
{
    QString text;
    QString Settings::*answer;
    bool isSecret = false;
};

Interview::Interview(std::istream& source, bool isPerson, Output& prompts)
    : input(source), person(isPerson), output(prompts)
{}

Settings Interview::ask(const Trial& tryAddress, const Trial& tryCredentials)
{
    Settings settings;
    askUntilRight(settings, {{Text::tr("Address of the loyalty server"), &Settings::address}},
                  tryAddress);
    askUntilRight(settings,
                  {{Text::tr("Code of the shop"), &Settings::shop},
                   {Text::tr("Code of the cash desk"), &Settings::desk}},
                  {});
    askUntilRight(settings,
                  {{Text::tr("User"), &Settings::user},
                   {Text::tr("Password"), &Settings::password, true},
                   {Text::tr("Key"), &Settings::key, true}},
                  tryCredentials);
    return settings;
}

void Interview::askUntilRight(Settings& settings, const QList<Question>& questions,
                              const Trial& trial)
{
    for (;;) {
        for (const Question& question : questions) {
            settings.*question.answer = answerTo(question);
        }
        const QString wrong = trial ? trial(settings) : QString();
        if (wrong.isEmpty()) {
            return;
        }
        if (!person) {
            throw Failure(wrong);
        }
        output.failure(wrong);
    }
}

QString Interview::answerTo(const Question& question)
{
    QString answer;
    do {
        answer = read(question);
        if (input.fail() || (!person && answer.isEmpty())) {
            throw Failure(Text::tr("The answer to \"%1\" is missing; nothing was written.")
                              .arg(question.text),
                          ExitCode::Usage);
        }
    } while (answer.isEmpty());
    return answer;
}

QString Interview::read(const Question& question)
{
    std::optional<Silence> silence;
    if (person && question.isSecret) {
        silence.emplace(); // before the question, so that an early answer is not shown either
    }
    if (person) {
        output.write(question.text + u": "_s);
    }
    std::string line;
    std::getline(input, line);
    if (silence) {
        output.write(u"\n"_s); // the one that was typed was not shown
    }
    return QString::fromStdString(line).trimmed();
}

} // namespace till::init

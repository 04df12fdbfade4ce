// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/usage.h"

#include "console/helptext.h"
#include "console/output.h"
#include "console/printable.h"
#include "console/text.h"
#include "input/nearestname.h"

#include <QRegularExpression>

#include <sstream>

using namespace Qt::StringLiterals;

namespace console {
namespace {

/// The command that the line has got to.
const CLI::App& reached(const CLI::App& app)
{
    const CLI::App* at = &app;
    while (!at->get_subcommands().empty()) {
        at = at->get_subcommands().front();
    }
    return *at;
}

QStringList commandsOf(const CLI::App& app)
{
    QStringList names;
    for (const CLI::App* command : app.get_subcommands({})) {
        names.append(QString::fromStdString(command->get_name()));
    }
    return names;
}

/// The long names of its options and of those of the commands above, which stand anywhere.
QStringList optionsOf(const CLI::App& app)
{
    QStringList names;
    for (const CLI::App* at = &app; at != nullptr; at = at->get_parent()) {
        for (const CLI::Option* option : at->get_options()) {
            for (const std::string& name : option->get_lnames()) {
                names.append(u"--"_s + QString::fromStdString(name));
            }
        }
    }
    return names;
}

/// The one known name that was meant, or an empty text.
QString meant(const QString& word, const QStringList& known)
{
    const QString nearest = input::nearestName(word, known);
    if (!nearest.isEmpty()) {
        return nearest;
    }
    QStringList begunSo;
    for (const QString& name : known) {
        if (name.startsWith(word)) {
            begunSo.append(name);
        }
    }
    return begunSo.size() == 1 ? begunSo.first() : QString();
}

QString unknownOption(const CLI::App& at, const QString& word)
{
    const QString nearest = meant(word, optionsOf(at));
    return nearest.isEmpty() ? Text::tr("There is no option \"%1\" here.").arg(word)
                             : Text::tr("There is no option \"%1\" here; did you mean \"%2\"?")
                                   .arg(word, nearest);
}

QString unknownWord(const CLI::App& at, const QString& word)
{
    const QStringList commands = commandsOf(at);
    if (commands.isEmpty()) {
        return Text::tr("The word \"%1\" is one too many here.").arg(word);
    }
    const QString nearest = meant(word, commands);
    return nearest.isEmpty()
               ? Text::tr("There is no command \"%1\".").arg(word)
               : Text::tr("There is no command \"%1\"; did you mean \"%2\"?").arg(word, nearest);
}

/// What is wrong with the first word that nothing takes; empty when all were taken. An unknown
/// option comes first: a word behind it may have been its value.
QString aboutLeftWords(const CLI::App& app)
{
    const CLI::App& at = reached(app);
    QStringList words;
    for (const std::string& word : app.remaining(true)) {
        words.append(QString::fromStdString(word));
        if (words.last().startsWith(u'-')) {
            return unknownOption(at, words.last().section(u'=', 0, 0));
        }
    }
    return words.isEmpty() ? QString() : unknownWord(at, words.first());
}

/// A complaint of the library, which has one language only, in the program's words.
QString reworded(const QString& complaint)
{
    const QList<std::pair<QString, QString>> sentences{
        {u"A subcommand is required"_s, Text::tr("The command is missing.")},
        {u"(.+) is required"_s, Text::tr("%1 is missing.")},
        {u"(.+) requires (.+)"_s, Text::tr("%1 goes together with %2 only.")},
        {u"(.+) excludes (.+)"_s, Text::tr("%1 does not go together with %2.")},
        {u"Could not convert: (.+) = (.*)"_s, Text::tr("%1 cannot be \"%2\".")},
        {uR"((.+): Value (.+) not in range \[?(\S+) (?:to|-) ([^\]]+)\]?)"_s,
         Text::tr("%1 cannot be \"%2\"; it goes from %3 to %4.")},
        {u"(.+): 1 required .+ missing"_s, Text::tr("%1 needs a value.")},
        {u"(.+): At Most 1 required but received .+"_s, Text::tr("%1 stands here twice.")}};
    for (const auto& [pattern, sentence] : sentences) {
        const QRegularExpressionMatch match =
            QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(complaint);
        if (match.hasMatch()) {
            QString text = sentence;
            for (int i = 1; i <= match.lastCapturedIndex(); ++i) {
                text.replace(u'%' + QString::number(i), match.captured(i));
            }
            return text;
        }
    }
    return complaint;
}

QString furtherHelp(const QString& program)
{
    return Text::tr("\"%1 --help\" tells more.").arg(program);
}

std::string complaint(const CLI::App* app, const CLI::Error& error)
{
    const QString left = aboutLeftWords(*app);
    const QString program = QString::fromStdString(app->get_name());
    const QString sentence = left.isEmpty() ? reworded(QString::fromUtf8(error.what())) : left;
    return u"%1: %2\n%3\n"_s.arg(program, printable::line(sentence), furtherHelp(program))
        .toStdString();
}

} // namespace

void usage::prepare(CLI::App& app)
{
    app.formatter(std::make_shared<HelpText>());
    app.failure_message(complaint);
    app.set_help_flag("-h,--help", Text::tr("Print this help and exit").toStdString());
    app.group(Text::tr("Subcommands").toStdString());
}

int usage::exitOf(const CLI::App& app, const CLI::ParseError& error, Output& out, Output& errors)
{
    std::ostringstream help;
    std::ostringstream mistake;
    const int code = app.exit(error, help, mistake);
    out.write(QString::fromStdString(help.str()));
    errors.write(QString::fromStdString(mistake.str()));
    return code;
}

} // namespace console

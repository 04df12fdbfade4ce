// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/helptext.h"

#include "console/text.h"

using namespace Qt::StringLiterals;

namespace console {

HelpText::HelpText()
{
    const auto name = [this](const char* word, const QString& text) {
        label(word, text.toStdString());
    };
    name("Usage", Text::tr("Usage"));
    name("OPTIONS", Text::tr("OPTIONS"));
    name("SUBCOMMAND", Text::tr("COMMAND"));
    name("Positionals", Text::tr("Arguments"));
    name("REQUIRED", Text::tr("(required)"));
    name("Excludes", Text::tr("not with"));
    name("Needs", Text::tr("only with"));
    name("TEXT", Text::tr("TEXT"));
    name("INT", Text::tr("NUMBER"));
    name("UINT:POSITIVE", Text::tr("NUMBER"));
}

std::string HelpText::make_group(std::string group, bool isPositional,
                                 std::vector<const CLI::Option*> options) const
{
    // the group that options are in when nobody says otherwise
    return Formatter::make_group(group == "Options" ? Text::tr("Options").toStdString()
                                                    : std::move(group),
                                 isPositional, std::move(options));
}

std::string HelpText::make_option(const CLI::Option* option, bool isPositional) const
{
    return line(make_option_name(option, isPositional) + make_option_opts(option),
                make_option_desc(option));
}

std::string HelpText::make_option_name(const CLI::Option* option, bool isPositional) const
{
    // the name that switches a flag off comes with the value that it sets
    return QString::fromStdString(Formatter::make_option_name(option, isPositional))
        .remove(u"{false}"_s)
        .toStdString();
}

std::string HelpText::make_option_opts(const CLI::Option* option) const
{
    // a range is written "INT:INT in [0 - 9]", and a choice "TEXT:{a,b}", under no label
    return QString::fromStdString(Formatter::make_option_opts(option))
        .replace(u"INT:INT in ["_s, Text::tr("NUMBER") + u" ["_s)
        .replace(u"TEXT:{"_s, u"{"_s)
        .toStdString();
}

std::string HelpText::make_subcommand(const CLI::App* command) const
{
    return line(command->get_display_name(true), command->get_description());
}

std::string HelpText::line(const std::string& name, const std::string& description) const
{
    const auto column = static_cast<qsizetype>(get_column_width());
    const QString margin(column, u' ');
    QString text = u"  "_s + QString::fromStdString(name);
    if (description.empty()) {
        return text.toStdString() + '\n';
    }
    text = text.size() < column ? text.leftJustified(column) : text + u'\n' + margin;
    const QString right = QString::fromStdString(description).replace(u'\n', u'\n' + margin);
    return (text + right).toStdString() + '\n';
}

} // namespace console

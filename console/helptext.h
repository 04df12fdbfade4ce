// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <CLI/CLI.hpp>

namespace console {

/// The help of a command line in the user's language, its columns aligned by characters: the
/// library's own counts bytes, which are more in Russian.
class HelpText : public CLI::Formatter
{
public:
    HelpText();

    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override;
    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_subcommand(const CLI::App* command) const override;

private:
    std::string line(const std::string& name, const std::string& description) const;
};

} // namespace console

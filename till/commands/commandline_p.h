// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/options.h"
#include "till/text.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/// What the parts of the command line's description share.
namespace till::commandline {

/// Texts of the command line before they become options.
struct Texts
{
    std::string config;
    std::string plugin;
    std::string database;
    std::string file;
    std::string points = "none";
    std::string tender;
    std::string record;
    std::string before;
    std::string target;
    std::string page;
    std::string card;
    std::string answers;
    std::string defaults;
    std::string from;
    std::vector<std::string> checks;
    std::vector<std::string> folders;
    std::string address;
    std::vector<std::string> cases;
    std::string junit;
};

/// A text of the command line in the language of the environment.
std::string words(const char* text);

CLI::App* addCommand(CLI::App& parent, const std::string& name, const char* description,
                     Options& options, Command command);
void addJson(CLI::App* command, Options& options);

/// The commands about what the till keeps: lists, archive, copies.
void addBooks(CLI::App& app, Options& options, Texts& texts);

} // namespace till::commandline

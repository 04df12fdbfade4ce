// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace CLI {
class App;
class ParseError;
} // namespace CLI

namespace console {
class Output;
}

/// The command line's own texts.
namespace console::usage {

/// Lets a command line speak the user's language: headings and labels of its help, and complaints
/// that name the nearest command or option. To be called before commands and options are added,
/// since they take it over from here.
void prepare(CLI::App& app);

/// Prints what a command line ends with by itself: help and version on the one output, a complaint
/// on the other. @return 0 for help and version, the library's number of the mistake otherwise
int exitOf(const CLI::App& app, const CLI::ParseError& error, Output& out, Output& errors);

} // namespace console::usage

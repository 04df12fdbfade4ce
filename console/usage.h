// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace CLI {
class App;
}

/// The command line's own texts.
namespace console::usage {

/// Lets a command line speak the user's language: headings and labels of its help, and complaints
/// that name the nearest command or option. To be called before commands and options are added,
/// since they take it over from here.
void prepare(CLI::App& app);

} // namespace console::usage

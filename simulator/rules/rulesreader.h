// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/rules/rules.h"

namespace simulator {

/// Reads rules from a TOML file; what it leaves out is 0 or as in the built-in rules' [auth].
/// Throws ConfigError when the file cannot be read or says something that is not understood.
Rules readRulesFile(const QString& path);

/// The same from a text; name stands for the file in messages.
Rules readRules(const QByteArray& text, const QString& name);

/// The text of the rules that apply when no file is given.
QByteArray builtInRules();

} // namespace simulator

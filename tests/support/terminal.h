// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/program.h"

/// Runs a program to its end on a terminal of its own.
/// @param columns the terminal's width
/// @param typed what somebody types, lines
/// @param prompt what stands on the terminal before anybody types
/// @return its exit code, -1 when a signal ended it, and what stands on the terminal, the typed
/// lines among it
RunResult runOnTerminal(const QString& file, const QStringList& arguments, const QString& folder,
                        int columns = 80, const QByteArray& typed = {},
                        const QByteArray& prompt = {});

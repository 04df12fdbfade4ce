// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace till {

struct Options;

namespace init {

struct Settings;

/// Whether settings work, before they are written.
namespace trial {

/// What is wrong with the address: as it is written, or on the way to the server; empty when
/// nothing is. Blocks for some seconds at most.
QString ofAddress(const QString& address);

/// What came of asking the server as a till would.
struct Answer
{
    QString wrong;           ///< a sentence; empty: the server and the plug-in take the settings
    bool isDoubtful = false; ///< nobody could be asked
    bool leftBehind = false; ///< see doctor::Doctor::leftSomethingBehind
};

/// Asks with one pre-check, which books nothing. Writes no file. Blocks for five seconds at most.
Answer ofAll(const Settings& settings, const Options& options);

} // namespace trial

} // namespace init

} // namespace till

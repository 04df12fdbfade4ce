// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

class Config;

namespace till {

/// The plug-in that is installed where plug-ins of this till belong, looked up from the program's
/// own file; empty when there is none or there are several, so that somebody has to choose.
QString installedPlugin();

/// The plug-in that is to be loaded: the one of the command line, otherwise that of the
/// configuration, otherwise the installed one; empty when there is none.
/// @param named on the command line, empty for none
/// @param installed the installed one, empty for none
QString chosenPlugin(const QString& named, const Config& config,
                     const QString& installed = installedPlugin());

} // namespace till

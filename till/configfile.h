// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// Where the configuration stands when the command line does not say.
namespace till::configfile {

/// The one in the current folder.
QString local();
/// The machine's, which the packages prepare.
QString ofMachine();

/// The local one if there is one, otherwise the machine's, readable or not; nothing when there is
/// neither.
/// @param machine where the machine's stands
QString found(const QString& machine = ofMachine());

} // namespace till::configfile

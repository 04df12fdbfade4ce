// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace till {

/// The plug-in that is installed where plug-ins of this till belong, looked up from the program's
/// own file; empty when there is none or there are several, so that somebody has to choose.
QString installedPlugin();

} // namespace till

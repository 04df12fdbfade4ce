// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <optional>

class QString;

/// Which version of the contract a plug-in was built for. Plug-ins call the host's operations by
/// their places in tables that are built into them, so one for another version would call something
/// else.
namespace poshost::plugincontract {

/// The version of the contract in this library: the number in its file name (libposhost.so.N),
/// which every change of the contracts that plug-ins would notice makes anew. From any thread.
/// @return at least 1
HOST_EXPORT int version();

/// The version that a plug-in was built for, from the name of the host library that its file asks
/// for. Reads the file without loading it, so nothing of the plug-in runs; to be asked before it is
/// loaded. From any thread; blocks for reading a few pages.
/// @param pluginFile the library's path
/// @return nothing when it cannot be read, is no library of this machine, is damaged or asks for no
///     host library
HOST_EXPORT std::optional<int> versionNeededBy(const QString& pluginFile);

} // namespace poshost::plugincontract

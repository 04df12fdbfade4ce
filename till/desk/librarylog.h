// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The log of a plug-in that writes through the Log4Qt library. Where the library is not installed,
/// the drop-in hands every line to Qt's category of the logger's name, and nothing is to be done.
namespace till::librarylog {

/// Whether this till was built with the library and can hand its lines on.
bool isKnown();

/// Where the library has no appender for the logger "orva", every line of it would vanish: then,
/// and only then, the logger gets one that hands its lines to Qt's category "orva", and so to the
/// till's console under the same switches as with the drop-in. The first call has the library open
/// the appenders that it is configured with. Calling it again changes nothing.
void giveConsole();

} // namespace till::librarylog

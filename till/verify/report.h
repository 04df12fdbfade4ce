// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/verify/results.h"

#include <QByteArray>

/// What a run has found, for people and for programs.
namespace till::verify::report {

/// For people: what is broken with request and answer, what was not tried and why, the times.
/// @param columns how many characters fit on a line
QString text(const Results& results, bool strict, int columns);
/// Everything, as JSON.
QString json(const Results& results, bool strict);
/// For servers that build: a test suite for each requirement.
QByteArray junit(const Results& results, bool strict);
/// Version 13 of the Test Anything Protocol.
QString tap(const Results& results, bool strict);
/// The requirements with their cases.
QString list();

} // namespace till::verify::report

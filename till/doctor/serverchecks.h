// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <optional>

namespace till::doctor {

class Report;
struct Exchange;
struct Subject;

/// What the server answers to a pre-check through the plug-in ("server.…"), and its clock
/// ("clock").
namespace serverchecks {

/// Whether everything is in order that a pre-check needs.
bool mayAsk(const Report& report);
/// @param exchange nothing when nobody asked, or no end came in time
void check(Report& report, const Subject& subject, const std::optional<Exchange>& exchange);

} // namespace serverchecks

} // namespace till::doctor

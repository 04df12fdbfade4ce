// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace till::doctor {

class Report;
struct Subject;

/// The configuration: its file, who may read it, names that nobody knows, and each known key
/// ("config.TABLE.KEY").
void checkConfig(Report& report, const Subject& subject);

} // namespace till::doctor

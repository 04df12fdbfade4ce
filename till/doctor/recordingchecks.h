// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace till::doctor {

class Report;
struct Subject;

/// The folder for records of what is said to the loyalty system ("recording").
void checkRecording(Report& report, const Subject& subject);

} // namespace till::doctor

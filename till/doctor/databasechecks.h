// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <optional>

namespace poshost {
struct DatabaseExamination;
} // namespace poshost

namespace till::doctor {

class Report;
struct Subject;

/// The database's file ("database.…") and the disk that it lies on ("disk").
namespace databasechecks {

/// The file as it lies there.
void checkFile(Report& report, const Subject& subject);
/// What is in it, but for what waits there. @param found nothing when it was not looked at, or no
/// end came in time
void checkContent(Report& report, const Subject& subject,
                  const std::optional<poshost::DatabaseExamination>& found);

} // namespace databasechecks

} // namespace till::doctor

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/checkstore.h"
#include "till/sharing/silentchecks.h"

#include <QString>

#include <optional>

namespace poshost {
struct DatabaseExamination;
} // namespace poshost

namespace till::doctor {

class Report;
struct Subject;

/// What waits in the database: the queue ("queue.…"), suspended checks ("checks.suspended"), what
/// the store has not got ("store.checks", with a store alone), and who delivers while no till is
/// open ("service").
namespace queuechecks {

/// Checks that wait for somebody.
struct CheckLook
{
    SuspendedChecks suspended;
    silentchecks::Waiting silent;
};

/// Looks for such checks in a till's database without changing anything about it; nothing where it
/// cannot be read so, or not in time. Never throws.
std::optional<CheckLook> lookAtChecks(const QString& databaseFile, int milliseconds);
/// To be called after the checks of the database.
/// @param found nothing when it was not looked at, or no end came in time
void check(Report& report, const Subject& subject,
           const std::optional<poshost::DatabaseExamination>& found,
           const std::optional<CheckLook>& checks);

} // namespace queuechecks

} // namespace till::doctor

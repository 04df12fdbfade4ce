// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace till::doctor {

class Report;
struct Subject;

/// The server's address as it is written ("address.…") and the time-out ("timeout").
void checkAddress(Report& report, const Subject& subject);

} // namespace till::doctor

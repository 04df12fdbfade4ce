// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace till::doctor {

class Report;

/// What the till takes from the system: the encoding of texts ("encoding").
void checkSystem(Report& report);

} // namespace till::doctor

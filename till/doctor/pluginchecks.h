// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDeadlineTimer>

namespace till::doctor {

class PluginVisit;
class Report;
struct Subject;

/// The plug-in's file and its way into the till ("plugin.…"), and where it logs ("logging").
/// @param deadline of its steps until it is ready
void checkPlugin(Report& report, const Subject& subject, PluginVisit& visit,
                 const QDeadlineTimer& deadline);

} // namespace till::doctor

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace poshost {
struct ConnectionProbe;
} // namespace poshost

namespace till::doctor {

class Report;
struct Subject;

/// The way to the server: name, proxy, connection ("road.…") and certificates ("tls.…").
/// @param probe only looked at where the address allows going
void checkRoad(Report& report, const Subject& subject, const poshost::ConnectionProbe& probe);

} // namespace till::doctor

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

namespace poshost {
class Database;
} // namespace poshost

namespace till::metrics {

/// How a till stands, for a monitoring: in the text form that Prometheus reads. Labels are words of
/// this program alone; no card, name or identifier is in it.
/// @throws BasicException "databaseError"
QByteArray text(poshost::Database& database);

} // namespace till::metrics

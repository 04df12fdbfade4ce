// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/database/storeerror.h"

#include <QString>

struct pg_conn;
struct pg_result;

/// What goes wrong at the store, as sentences. Of the server's own words only the first line is
/// said, never its details, which quote rows.
namespace orvastore::failuretexts {

/// The server's code of "read-only".
inline constexpr char readOnly[] = "25006";
/// Of "a row with this key is there".
inline constexpr char keyIsTaken[] = "23505";
/// Of "there is no such function".
inline constexpr char noFunction[] = "42883";

/// Why no session came about.
poshost::Message ofConnecting(pg_conn* tried, const QString& server);
/// What is known about a session that has ended.
poshost::Message lost(pg_conn* session);
/// What the server has refused; the command has done nothing.
StoreError refusal(const pg_result* result);

} // namespace orvastore::failuretexts

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

namespace poshost {

class Database;

/// What is left of a message's addresses once it needs them no more.
namespace deliveredaddresses {

/// Takes who is to log in out of the stored addresses of a message. An address that is none, or in
/// which more than that looks like a user, becomes "***". To be called in the transaction in which
/// the message becomes delivered.
/// @throws BasicException "databaseError"
void eraseUsers(Database& database, qint64 messageId);

} // namespace deliveredaddresses

} // namespace poshost

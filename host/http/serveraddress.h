// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QString>
#include <QUrl>

/// Addresses of servers: which may be used, and how they are shown.
///
/// An address may hold what is nobody's business (user, password, a key in its query), and one that
/// is mistyped may hold it anywhere. So nothing is ever cut out of an address: what is shown is put
/// together from scheme, host, port and path, in ASCII, "?***" stands for a query or a fragment,
/// and
/// "***" for all that is not quite an address.
namespace poshost::serveraddress {

/// What is wrong with a configured address, a sentence that does not repeat it; empty for a good or
/// an empty one. Good are http and https with a name, in any script, or with a number, and without
/// a single "@": a path writes it "%40".
HOST_EXPORT QString complaintAbout(const QString& written);

HOST_EXPORT QString shown(const QUrl& url);
/// The same for an address as it was written.
HOST_EXPORT QString shown(const QString& written);
/// The same for that of a proxy, which may name itself without a scheme, or one of SOCKS.
HOST_EXPORT QString shownProxy(const QString& written);

} // namespace poshost::serveraddress

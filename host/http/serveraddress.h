// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
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

/// Judges a configured address. Good are http and https with a name, in any script, or with a
/// number, and without a single "@": a path writes it "%40".
/// @param written the address as it stands in the configuration
/// @return what is wrong with it, a sentence that does not repeat it; empty for a good or an empty
/// one
HOST_EXPORT Message complaintAbout(const QString& written);

/// Makes an address fit to be shown to anybody.
/// @param url the address
/// @return the text to show, "***" for what is not quite an address
HOST_EXPORT QString shown(const QUrl& url);
/// The same for an address as it was written.
/// @param written the address
/// @return the text to show
HOST_EXPORT QString shown(const QString& written);
/// The same for that of a proxy, which may name itself without a scheme, or one of SOCKS.
/// @param written the address
/// @return the text to show
HOST_EXPORT QString shownProxy(const QString& written);

} // namespace poshost::serveraddress

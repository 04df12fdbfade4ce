// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QString>
#include <QStringList>
#include <limits>
#include <optional>

namespace poshost {

/// A key of the configuration that the system knows, and what it may hold.
struct KnownKey
{
    /// What a key may hold.
    enum class Kind
    {
        Text,
        Path,    ///< a text; a relative one starts at the configuration's own folder
        Address, ///< a text, the address of a server that is good to be shown (serveraddress.h)
        Proxy,   ///< a text, an address that may name user and password
        Secret,  ///< a text, or a table whose one key "file" names the file that holds it
        Number,  ///< a whole number that fits an int
    };

    QString table; ///< the table's name
    QString key;   ///< the key's name in it
    /// What it may hold.
    Kind kind = Kind::Text;
    int minimum = std::numeric_limits<int>::min(); ///< of a Number
};

/// The one list of what may stand in the configuration.
namespace knownkeys {

/// Looks a key up. Any thread, as all of these.
/// @param table name of the table, in its own case
/// @param key name of the key in it
/// @return what the key may hold; nothing for one that nobody reads
HOST_EXPORT std::optional<KnownKey> find(const QString& table, const QString& key);
/// @return the names of all tables, in the order in which they are documented
HOST_EXPORT QStringList tables();
/// @param table name of a table
/// @return the names of its keys, in the order in which they are documented; none for an unknown
/// table
HOST_EXPORT QStringList keysOf(const QString& table);
/// Finds what a mistyped name was meant to be.
/// @param name as somebody has written it
/// @param candidates the names that there are
/// @return the candidate with the fewest letters to add, drop or change, case aside; the first of
/// equals; empty when there are no candidates
QString nearest(const QString& name, const QStringList& candidates);

} // namespace knownkeys

} // namespace poshost

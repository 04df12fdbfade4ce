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
    enum class Kind
    {
        Text,
        Path,    ///< a text; a relative one starts at the configuration's own folder
        Address, ///< a text, the address of a server that is good to be shown (serveraddress.h)
        Proxy,   ///< a text, an address that may name user and password
        Secret,  ///< a text, or a table whose one key "file" names the file that holds it
        Number,  ///< a whole number that fits an int
    };

    QString table;
    QString key;
    Kind kind = Kind::Text;
    int minimum = std::numeric_limits<int>::min(); ///< of a Number
};

/// The one list of what may stand in the configuration.
namespace knownkeys {

/// The known key, or nothing.
HOST_EXPORT std::optional<KnownKey> find(const QString& table, const QString& key);
HOST_EXPORT QStringList tables();
HOST_EXPORT QStringList keysOf(const QString& table);
/// The candidate with the fewest letters to add, drop or change, case aside; the first of equals.
QString nearest(const QString& name, const QStringList& candidates);

} // namespace knownkeys

} // namespace poshost

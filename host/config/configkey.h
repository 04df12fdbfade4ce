// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVariant>
#include <limits>

namespace poshost {

/// What is known of a key of the configuration: its sheet. Whoever reads the key writes it.
struct ConfigKey
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

    /// What the host itself, or a till, does with a key that another one owns.
    enum class Use
    {
        None,
        Database,      ///< the file of the outgoing queue
        ServerAddress, ///< where the plug-in's server is
        Timeout,       ///< seconds that one exchange with the plug-in's server may take
        Credential,    ///< tells the plug-in's server who asks
    };

    QString table = {};     ///< name of the table
    QString key = {};       ///< name of the key in it
    Kind kind = Kind::Text; ///< what it may hold
    /// What it is good for, in English: one sentence without capital and full stop.
    QString about = {};
    /// A value as it may stand in the file.
    QString sample = {};
    /// What holds without the key: a text or a whole number; invalid where nothing does.
    QVariant defaultValue = {};
    /// Where nothing does: what that means, in English, such as "no proxy".
    QString without = {};
    /// What a number counts, in English and the plural; empty for none.
    QString unit = {};
    int minimum = std::numeric_limits<int>::min(); ///< of a Number
    bool isRequired = false;                       ///< its owner cannot work without it
    bool mayBeEmpty = false;                       ///< of a text: if it is written out
    Use use = Use::None;                           ///< what others do with it

    /// @return as Config is asked for it: "Table:key"
    QString name() const { return table + QLatin1Char(':') + key; }
};

} // namespace poshost

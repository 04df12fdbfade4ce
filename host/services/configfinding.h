// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"

#include <QString>

/// Something about a configuration file that is not as it should be.
struct ConfigFinding
{
    /// What is the matter.
    enum class Kind
    {
        Unreadable,  ///< the file cannot be read
        Syntax,      ///< the file is not TOML
        WrongValue,  ///< a known key, or table, holds what it cannot hold
        UnknownName, ///< a key or table that nobody reads
        OpenRights,  ///< others may read a file with a secret in it
    };

    /// What is the matter; says also whether it is an error.
    Kind kind = Kind::Unreadable;
    QString table; ///< empty where the finding is about none
    QString key;   ///< the same
    QString file;  ///< the file that the finding is about
    /// What is wrong, for people, with file and line; never quotes a value.
    poshost::Message text;

    /// Whether the configuration cannot be used like this.
    bool isError() const
    {
        return kind == Kind::Unreadable || kind == Kind::Syntax || kind == Kind::WrongValue;
    }
};

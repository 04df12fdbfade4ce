// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QString>

namespace tr {

/// A text of the system for people: a stable identifier and the Russian wording.
class HOST_EXPORT Tr
{
public:
    /// An empty text.
    Tr() = default;
    /// @param id stable identifier, for errors the error code
    /// @param text the Russian wording
    Tr(const QString& id, const QString& text);
    Tr(const Tr&) = default;
    Tr& operator=(const Tr&) = default;
    virtual ~Tr();

    /// @return the stable identifier
    QString id() const { return identifier; }
    /// @return the Russian wording, plain text of any length
    QString ru() const { return russian; }
    /// @return whether there is neither an identifier nor a wording: nothing happened
    bool isEmpty() const { return identifier.isEmpty() && russian.isEmpty(); }

    /// Two texts are equal when identifier and wording are.
    friend bool operator==(const Tr& left, const Tr& right)
    {
        return left.identifier == right.identifier && left.russian == right.russian;
    }

private:
    QString identifier;
    QString russian;
};

} // namespace tr

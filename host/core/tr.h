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

    QString id() const { return identifier; }
    QString ru() const { return russian; }
    bool isEmpty() const { return identifier.isEmpty() && russian.isEmpty(); }

    friend bool operator==(const Tr& left, const Tr& right)
    {
        return left.identifier == right.identifier && left.russian == right.russian;
    }

private:
    QString identifier;
    QString russian;
};

} // namespace tr

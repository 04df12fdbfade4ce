// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"
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
    /// @param id stable identifier, for errors the error code
    /// @param said one of the host's sentences, whose Russian wording the text is
    Tr(const QString& id, const poshost::Message& said);
    Tr(const Tr&) = default;
    Tr& operator=(const Tr&) = default;
    virtual ~Tr();

    /// @return the stable identifier
    QString id() const { return identifier; }
    /// @return the Russian wording, plain text of any length
    QString ru() const { return russian; }
    /// @return what can be said in the reader's language; of a text that no host has made the
    /// wording itself, the same in every language
    poshost::Message message() const
    {
        return said.isEmpty() ? poshost::Message::plain(russian) : said;
    }
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
    poshost::Message said; ///< empty: the wording is all there is
};

} // namespace tr

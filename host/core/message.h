// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QList>
#include <QString>

namespace poshost {

/// The languages that the host's messages can be said in.
enum class Language
{
    English, ///< for whoever reads it
    Russian, ///< which a tr::Tr keeps
};

/// What the host has to say to people, before it is said in a language: the code of a sentence and
/// what stands in it. A text from outside (a file's name, what the operating system says) is a
/// message without a code, the same in every language. The sentences stand in wordings.cpp.
class HOST_EXPORT Message
{
public:
    /// Nothing to say.
    Message() = default;

    /// A text from outside.
    /// @param text said as it stands in every language
    /// @return the message without a code
    static Message plain(const QString& text);

    /// One of the host's sentences.
    /// @param code the sentence's name in wordings.cpp
    /// @param values what stands in it, in the order of its places: texts, whole numbers, messages
    /// @return the message
    template <typename... Values>
    static Message of(const char* code, const Values&... values)
    {
        return Message(QString::fromLatin1(code), {value(values)...});
    }

    /// @return whether there is nothing to say
    bool isEmpty() const { return name.isEmpty() && text.isEmpty(); }
    /// @return the sentence's name, the same in every language; empty for a text from outside
    QString code() const { return name; }
    /// @return what stands in the sentence, in the order of its places
    QList<Message> arguments() const { return inside; }

    /// Says it.
    /// @param language the reader's
    /// @return the sentence, of any length. One that this version does not know, since a newer one
    /// has stored it, is its code and what stands in it
    QString in(Language language) const;
    /// Says it in Russian.
    /// @return the sentence
    QString ru() const { return in(Language::Russian); }

    /// The message for a place that keeps texts only.
    /// @return what fromStored makes the same message of; a text from outside stays as it is
    QString stored() const;
    /// Takes a message up that was kept.
    /// @param kept what stored has made of it, or a sentence that was kept without its code
    /// @return the message; of what stored has not made the text as it stands
    static Message fromStored(const QString& kept);

    /// Two messages are equal when they say the same in every language.
    friend bool operator==(const Message& left, const Message& right)
    {
        return left.name == right.name && left.text == right.text && left.inside == right.inside;
    }

private:
    Message(const QString& code, const QList<Message>& arguments) : name(code), inside(arguments) {}

    static Message value(const Message& message) { return message; }
    static Message value(const QString& outside) { return plain(outside); }
    static Message value(qint64 number) { return plain(QString::number(number)); }

    QString name;
    QString text; ///< of a message without a code
    QList<Message> inside;
};

} // namespace poshost

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/message.h"

#include "host/core/wordings_p.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

/// The sentence with its places filled in one go: what stands in it may look like a place.
QString filled(const QString& sentence, const QStringList& values)
{
    QString result;
    for (qsizetype i = 0; i < sentence.size(); ++i) {
        const bool isPlace = sentence.at(i) == u'%' && i + 1 < sentence.size();
        const qsizetype number = isPlace ? sentence.at(i + 1).digitValue() : 0;
        if (number >= 1 && number <= values.size()) {
            result += values.at(number - 1);
            ++i;
        } else {
            result += sentence.at(i);
        }
    }
    return result;
}

QJsonValue toJson(const Message& message)
{
    if (message.code().isEmpty()) {
        return message.ru();
    }
    QJsonArray parts{message.code()};
    for (const Message& argument : message.arguments()) {
        parts.append(toJson(argument));
    }
    return parts;
}

} // namespace

Message Message::plain(const QString& text)
{
    Message message;
    message.text = text;
    return message;
}

QString Message::in(Language language) const
{
    if (name.isEmpty()) {
        return text;
    }
    QStringList values;
    for (const Message& argument : inside) {
        values.append(argument.in(language));
    }
    const wordings::Wording* const known = wordings::find(name);
    if (known == nullptr) {
        return values.isEmpty() ? name : u"%1: %2"_s.arg(name, values.join(u", "_s));
    }
    return filled(
        QString::fromUtf8(language == Language::Russian ? known->russian : known->english), values);
}

QString Message::stored() const
{
    return name.isEmpty()
               ? text
               : QString::fromUtf8(
                     QJsonDocument(toJson(*this).toArray()).toJson(QJsonDocument::Compact));
}

Message Message::fromStored(const QString& kept)
{
    // a message's nesting is the host's own doing; a damaged row's must not grow the stack
    constexpr int deepest = 8;
    const auto read = [](const auto& self, const QJsonValue& value, int level) -> Message {
        const QJsonArray parts = value.toArray();
        if (parts.isEmpty() || level > deepest) {
            return plain(value.toString());
        }
        QList<Message> arguments;
        for (qsizetype i = 1; i < parts.size(); ++i) {
            arguments.append(self(self, parts.at(i), level + 1));
        }
        return {parts.first().toString(), arguments};
    };
    const QJsonArray parts = QJsonDocument::fromJson(kept.toUtf8()).array();
    return parts.isEmpty() || parts.first().toString().isEmpty() ? plain(kept)
                                                                 : read(read, parts, 1);
}

} // namespace poshost

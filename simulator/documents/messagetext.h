// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QHash>
#include <QStringList>

namespace simulator {

/// A text for the cashier ("pos") or the customer ("check"), with placeholders in braces.
struct Message
{
    QString channel;
    QString text;
};

/// The names that may stand in braces in a message: name, surname, balance, spend, earn, discount
/// and total.
QStringList placeholders();

/// The first name in braces that is not among the placeholders, or an empty text.
QString unknownPlaceholder(const QString& text);

/// The text with every placeholder replaced by its value. What a value contains is not replaced
/// again. Where the owner has no name, the commas and blanks around it go with it.
QString messageText(const QString& text, const QHash<QString, QString>& values);

} // namespace simulator

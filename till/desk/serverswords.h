// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

namespace poshost {
class RefusalListener;
} // namespace poshost

/// What a server has written to a refusal, beside what the plug-in says of it.
namespace till::serverswords {

/// The most characters of it that people are shown.
inline constexpr qsizetype longest = 300;

/// The words as one printable line of at most `longest` characters. Markup is left out, an encoding
/// that the body or the header names is followed, blanks are drawn together; what is cut off shows
/// as "…".
/// @param contentType the answer's header of that name, or nothing
QString lineOf(const QByteArray& body, const QString& contentType);

/// The line of the last refusal that was heard, without the card's whole number in it; empty when
/// there was none or it had no words.
/// @param card a number that may stand in it, or nothing
QString lineOf(const poshost::RefusalListener& heard, const QString& card);

} // namespace till::serverswords

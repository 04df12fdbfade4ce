// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/person/person.h"

#include <QJsonValue>
#include <QRegularExpression>
#include <QVariant>

#include <functional>

namespace till {

/// Takes people out of texts: of a card's number its last four digits stay, "***" stands for each
/// word of a name, whatever its case. All else stays byte for byte, and the same is always replaced
/// by the same: what was copied from one text to another is still equal.
///
/// Found are the names as they are known, not other forms of them. Of cards with fewer than
/// cardspelling::shortest characters only values that are nothing but the number are masked.
class PersonMask
{
public:
    explicit PersonMask(const People& people);

    /// Whether a card's number is in a text, plain or with markup.
    bool hasCard(const QString& text) const;
    /// A text, with markup where it begins with "<": there only what stands between tags, in
    /// comments and in the values of attributes is looked at.
    QString masked(const QString& text) const;
    /// A text that is no markup, whatever it begins with: all of it is looked at.
    QString plainMasked(const QString& text) const;
    /// All texts in a value; the names of an object's members stay.
    QJsonValue masked(const QJsonValue& value) const;
    QVariant masked(const QVariant& value) const;
    /// Bytes in the encoding that they declare, which they keep.
    QByteArray masked(const QByteArray& bytes) const;
    /// The number of a card in its own field; another's stays.
    QString maskedNumber(const QString& number) const;
    /// A line of a log, in which every letter and digit that is taken out leaves as many stars as
    /// it has bytes in UTF-8. Names are only found whole, all words beside each other.
    QByteArray maskedInPlace(const QByteArray& text) const;

private:
    using Replace = std::function<QString(const QString&)>;
    QString replaced(const QString& text, const QRegularExpression& what,
                     const Replace& replacement) const;
    QString markupMasked(const QString& text) const;
    QString tagMasked(const QString& tag) const;
    QString referencesMasked(const QString& text) const;

    People hidden;
    QSet<QString> words;      ///< of names, case folded
    QRegularExpression cards; ///< an empty pattern: none is to be looked for
    QRegularExpression wholeNames;
};

} // namespace till

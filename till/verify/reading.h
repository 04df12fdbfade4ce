// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "protocol/names.h"
#include "protocol/xmltree.h"

#include <optional>

namespace till::verify {

using Names = QList<QString>;

/// An amount as the protocol writes it, in kopecks: digits, a point and one or two decimals if any,
/// a minus before it. Nothing for every other text, that a till might read all the same.
std::optional<qint64> readAmount(const QString& text);

/// What a document of the server's says, element by element.
class Reading
{
public:
    explicit Reading(const QByteArray& document) : tree(document) {}

    /// Why it is no XML; empty when it is.
    QString problem() const { return tree.problem(); }
    QString rootName() const;
    bool has(const Names& names) const
    {
        return !tree.elements().isEmpty() && tree.find(0, names) >= 0;
    }
    /// Empty where the element is missing.
    QString text(const Names& names) const { return textIn(0, names); }
    std::optional<qint64> amount(const Names& names) const { return readAmount(text(names)); }
    /// The goods lines.
    QList<qsizetype> lines() const;
    /// The line with that identifier, -1 where there is none.
    qsizetype line(const QString& id) const;
    /// Below an element, that of a line for instance; empty below none (-1).
    QString textIn(qsizetype element, const Names& names) const;
    std::optional<qint64> amountIn(qsizetype element, const Names& names) const;
    /// Where it stands, or would.
    QString path(qsizetype element, const Names& names) const;
    const protocol::XmlTree& xml() const { return tree; }

    std::optional<qint64> balance() const;
    /// Whether there is one, in whatever form.
    bool saysBalance() const;
    static Names balancePath();

private:
    protocol::XmlTree tree;
};

/// What a confirmation has the server book, in kopecks.
struct Booking
{
    qint64 total = 0;    ///< of the lines, before anything
    qint64 discount = 0; ///< used
    qint64 spent = 0;    ///< points used
    qint64 earned = 0;   ///< of each line its award in the share that was paid in money

    qint64 change() const { return earned - spent; }

    static Booking of(const QByteArray& confirmation);
};

} // namespace till::verify

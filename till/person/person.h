// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSet>
#include <QString>

namespace till {

/// What tells who customers are.
struct People
{
    QSet<QString> cards; ///< numbers in their plain spelling (cardspelling::plain)
    QSet<QString> names; ///< as they stand anywhere, one or several words each

    void add(const People& others)
    {
        cards.unite(others.cards);
        names.unite(others.names);
    }
};

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QString>

namespace till::verify {

/// What a server has to do, as the protocol's page says it.
struct Requirement
{
    QString name;
    bool isMust = true;
    QString sentence;

    /// All of the page, in its order.
    static QList<Requirement> all();
    /// The one of that name; one without a sentence where there is none.
    static Requirement named(const QString& name);
};

} // namespace till::verify

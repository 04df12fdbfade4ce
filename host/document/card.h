// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/client.h"
#include "host/hostexport.h"

#include <QSharedPointer>
#include <QString>

/// A customer's card.
class HOST_EXPORT Card
{
public:
    /// A card of which nothing but the number is known.
    /// @param number its number as it is printed or typed, not checked
    explicit Card(const QString& number = QString());

    /// The card's number, the same for the life of the object.
    QString getNumber() const { return number; }

    /// The card's owner; null until a pre-check has named them. Shared with
    /// whoever has set it.
    QSharedPointer<Client> getClient() const { return client; }
    void setClient(const QSharedPointer<Client>& value) { client = value; }

private:
    QString number;
    QSharedPointer<Client> client;
};

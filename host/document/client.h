// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QObject>
#include <QString>

/// The person behind a card, as the cashier sees them.
class HOST_EXPORT Client : public QObject
{
    Q_OBJECT
public:
    Client();
    ~Client() override;

    /// The whole name as it is shown to the cashier; may be empty. Its characters are a server's
    /// and not fit for a terminal as they are.
    QString getName() const { return name; }
    /// Sets the name.
    /// @param value the whole display name, stored as it is
    void setName(const QString& value) { name = value; }

private:
    QString name;
};

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "store/sharedbooks.h"

#include <QSharedPointer>

/// Suspended checks in the file of a FileStore, with its words in place of a connection string: an
/// "unanswered" one does everything the first time and lets its answer get lost.
class FileSuspended : public orvastore::SharedBooks
{
public:
    void open(const orvastore::StoreSettings& settings) override;
    void interrupt() override {}

    orvastore::StoreResult leave(const orvastore::LeftCheck& check) override;
    orvastore::TakeUp takeUp(const QString& shop, const QString& which, const QString& till,
                             const QString& token) override;
    orvastore::StoreResult settleTakeUp(const QString& shop, const QString& token) override;
    orvastore::StoreResult
    forEachLeft(const QString& shop,
                const std::function<void(const orvastore::LeftCheck&)>& take) override;

protected:
    /// @return null when the store is away
    poshost::Database* opened();

private:
    orvastore::StoreResult done(bool isNew) const;

    QSharedPointer<poshost::Database> database;
    QString file;
    bool isAway = false;
    bool isUnanswered = false;
};

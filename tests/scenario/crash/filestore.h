// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/database/database.h"
#include "store/storeclient.h"
#include "tests/scenario/crash/filebooks.h"

#include <QObject>
#include <QSharedPointer>

/// A store in a file of its own, so that a till can be stopped at each call while it hands over,
/// the store's commit included. The file has the tables of a till, whose program delivers it.
///
/// In place of a connection string: "file=NAME", "away" for a store that is not reached,
/// "unanswered" for one that keeps what it is given the first time and lets its answer get lost.
class FileStore : public orvastore::StoreClient
{
public:
    void open(const orvastore::StoreSettings& settings) override;
    orvastore::StoreResult reach() override;
    QList<orvastore::StoreResult> handOver(const QList<orvastore::HandedCheck>& checks) override;
    void interrupt() override {}

private:
    bool keep(const orvastore::HandedCheck& check);
    void keepMessage(const orvastore::HandedCheck& check);

    QSharedPointer<poshost::Database> database;
    QString file;
    bool isAway = false;
    bool isUnanswered = false;
};

/// What the loader asks the module for.
class FileStoreDriver : public QObject, public orvastore::StoreDriver
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.orva.StoreDriver/1")
    Q_INTERFACES(orvastore::StoreDriver)

public:
    QSharedPointer<orvastore::StoreClient> makeClient() override
    {
        return QSharedPointer<FileStore>::create();
    }
    QSharedPointer<orvastore::SharedBooks> makeBooks() override
    {
        return QSharedPointer<FileBooks>::create();
    }
};

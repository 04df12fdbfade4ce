// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace orvastore {

/// What the command line of "orva-store" asks for.
struct Options
{
    enum class Command : char
    {
        Work,
        Migrate,
        Admit,
        Doctor,
        Status,
        Metrics,
        QueueList,
        QueueShow,
        QueueRetry,
        QueuePark,
        QueueSettle,
        QueueReauthorize,
        SuspendedList,
        SuspendedRelease,
        ReturnsList,
        ReturnsRelease,
    };

    Command command = Command::Work;
    QString config;            ///< file with the settings; empty: the default places
    QString worker;            ///< name of the worker; empty: machine and process
    QString authorizationFile; ///< what is delivered with; empty: what the tills have handed over
    QString role;              ///< a login of the database
    QString shop;              ///< whose till it is, or whose credentials are replaced
    QString queue;             ///< name of a queue
    QString check;             ///< identifier of a suspended check
    QString identifier;        ///< of a check
    qint64 message = 0;
    int laneTimeout = 10;    ///< seconds after which a silent worker's lane is free
    int requestTimeout = 10; ///< seconds that the loyalty server is waited for
    bool untilEmpty = false;
    bool watch = false; ///< again and again, until stopped
    QString listen;     ///< address and port of the metrics
    bool json = false;
};

} // namespace orvastore

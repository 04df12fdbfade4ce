// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/mockfactory.h"
#include "host/hostexport.h"

#include <QDateTime>
#include <QObject>

/// The clock. Obtained through MockFactory, so that a test can stop it.
class HOST_EXPORT CurrentTime : public QObject
{
    Q_OBJECT
public:
    /// A clock that asks the system.
    CurrentTime();
    ~CurrentTime() override;

    /// Asks the clock. Any thread, for an object of its own.
    /// @return the current local date and time, to the millisecond
    virtual QDateTime currentDateTime();

    /// The current moment, of the registered double when there is one, in milliseconds since 1970
    /// in UTC. Without a double this does not ask for the time zone, which takes the C library two
    /// looks at a file. Any thread.
    /// @return milliseconds; may go back when somebody sets the clock
    static qint64 milliseconds();
};

extern template class HOST_EXPORT MockFactory<CurrentTime>;

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
    CurrentTime();
    ~CurrentTime() override;

    /// The current local date and time, to the millisecond.
    virtual QDateTime currentDateTime();
};

extern template class HOST_EXPORT MockFactory<CurrentTime>;

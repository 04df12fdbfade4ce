// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QSharedPointer>

namespace Log4Qt {

class LoggingEvent;

class Appender : public QObject
{
public:
    ~Appender() override;
    virtual bool requiresLayout() const = 0;
    virtual void doAppend(const LoggingEvent& event) = 0;
};

using AppenderSharedPtr = QSharedPointer<Appender>;

} // namespace Log4Qt

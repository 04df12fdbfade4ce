// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <log4qt/appender.h>
#include <mutex>

namespace Log4Qt {

class AppenderSkeleton : public Appender
{
public:
    ~AppenderSkeleton() override;
    virtual void activateOptions();
    void doAppend(const LoggingEvent& event) override;

protected:
    virtual void append(const LoggingEvent& event) = 0;

private:
    std::mutex mutex;
    bool appending = false;
};

} // namespace Log4Qt

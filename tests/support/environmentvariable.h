// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QtGlobal>

/// An environment variable for as long as it lives.
class EnvironmentVariable
{
public:
    EnvironmentVariable(const char* variable, const QByteArray& value)
        : name(variable), former(qgetenv(variable)), wasSet(qEnvironmentVariableIsSet(variable))
    {
        qputenv(name, value);
    }
    ~EnvironmentVariable() { wasSet ? qputenv(name, former) : qunsetenv(name); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    const char* name;
    QByteArray former;
    bool wasSet;
};

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"
#include "testfolder.h"

/// Puts a configuration made of a TOML text in the place of the process's own while it lives.
class Configured
{
public:
    explicit Configured(const QByteArray& toml)
    {
        config.load(folder.write(QStringLiteral("orva.toml"), toml));
        Singleton<Config>::instance = &config;
    }
    ~Configured() { Singleton<Config>::instance = former; }
    Configured(const Configured&) = delete;
    Configured& operator=(const Configured&) = delete;

private:
    TestFolder folder;
    Config config;
    Config* former = Singleton<Config>::instance;
};

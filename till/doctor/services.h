// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"
#include "host/services/session.h"

#include <QSharedPointer>

namespace till::doctor {

/// The services that a plug-in needs, put in their places while this lives; no queue among them.
class Services
{
public:
    explicit Services(const QSharedPointer<Config>& given)
        : config(given), formerConfig(Singleton<Config>::instance),
          formerSession(Singleton<Session>::instance)
    {
        Singleton<Config>::instance = config.data();
        Singleton<Session>::instance = &session;
    }
    ~Services()
    {
        Singleton<Session>::instance = formerSession;
        Singleton<Config>::instance = formerConfig;
    }
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

private:
    const QSharedPointer<Config> config;
    Session session;
    Config* const formerConfig;
    Session* const formerSession;
};

} // namespace till::doctor

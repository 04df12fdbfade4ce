// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>

/// An action of the host that a plug-in can take over.
struct ActionHandler
{
    QString action;
    std::function<bool(const QVariantMap&)> handle;
};

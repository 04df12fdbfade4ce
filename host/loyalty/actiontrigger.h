// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <functional>

/// Something that runs by itself when an action of the host happens.
struct ActionTrigger
{
    int id = 0;
    QString action;
    std::function<void()> run;
};

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QCoreApplication>

namespace console {

/// The translation context of what both programs say.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Console)
};

} // namespace console

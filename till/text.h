// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QCoreApplication>

namespace till {

/// The one translation context of the till: Text::tr("…") wherever a person reads it.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Till)
};

} // namespace till

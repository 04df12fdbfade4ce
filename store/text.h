// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QCoreApplication>

namespace orvastore {

/// The translation context of "orva-store": Text::tr("…") for what it tells people.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Store)
};

} // namespace orvastore

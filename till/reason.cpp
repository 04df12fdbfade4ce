// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/reason.h"

#include "host/core/basicexception.h"

namespace till {

QString reasonOf(const std::exception& error)
{
    const auto* known = dynamic_cast<const BasicException*>(&error);
    return known != nullptr ? known->tr().ru() : QString::fromUtf8(error.what());
}

} // namespace till

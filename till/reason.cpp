// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/reason.h"

#include "host/core/basicexception.h"
#include "till/text.h"

#include <new>

namespace till {

QString reasonOf(const std::exception& error)
{
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return Text::tr("there is not enough memory");
    }
    const auto* known = dynamic_cast<const BasicException*>(&error);
    return known != nullptr ? known->tr().ru() : QString::fromUtf8(error.what());
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/basicexception.h"
#include "till/failure.h"
#include "till/reason.h"

namespace till {

/// Does a cash desk's work with the database. What the database refuses becomes the Failure that
/// the desk's operations promise.
template <typename Work>
auto storing(const Work& work) -> decltype(work())
{
    try {
        return work();
    } catch (const BasicException& error) {
        throw Failure(reasonOf(error));
    }
}

} // namespace till

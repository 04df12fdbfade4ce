// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/verify/wire.h"

#include <QString>

namespace till::verify {

/// What a server has done that it must not do.
struct Complaint
{
    QString requirement; ///< empty: that of the case
    Exchange exchange;   ///< in which it came out
    QString path;        ///< of the element; empty where it is about the whole answer
    QString expected;
    QString got;
};

/// Thrown by a case that has seen its requirement broken.
struct Broken
{
    Complaint complaint;
};

/// Thrown by a case that cannot be played, with the reason.
struct NotTried
{
    QString reason;
};

} // namespace till::verify

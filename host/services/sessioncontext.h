// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QVariant>

/// What a session is about, for records that must be traced back to it.
class HOST_EXPORT SessionContext
{
public:
    /// A context that never changes.
    /// @param contextValue something whose text tells this session from others; invalid: nothing
    explicit SessionContext(const QVariant& contextValue = QVariant());

    /// The value that records keep as text, for instance the shift's number.
    QVariant getContextValue() const { return contextValue; }

private:
    QVariant contextValue;
};

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/tr.h"

#include <stdexcept>

/// Base of every exception that crosses a library border of the host. Exported with its type
/// information, so that what a plug-in throws can be caught in the till.
class HOST_EXPORT BasicException : public std::runtime_error
{
public:
    /// Keeps a copy of the message. what() is "identifier: Russian text" in UTF-8.
    /// @param message the identifier by which a program tells errors apart, and the sentence for
    /// people
    explicit BasicException(const tr::Tr& message);
    BasicException(const BasicException&) = default;
    BasicException& operator=(const BasicException&) = default;
    ~BasicException() override;

    /// @return the message, a copy: the identifier for programs, the wording for people
    tr::Tr tr() const { return text; }

private:
    tr::Tr text;
};

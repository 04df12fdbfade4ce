// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "client/exception.h"

namespace orva {

/// The server could not be reached, or the exchange broke off. A type of its own, so that it can be
/// told from a server that refuses.
class NoConnectionException : public Exception
{
public:
    /// The detail stays empty.
    explicit NoConnectionException(const tr::Tr& message);
    NoConnectionException(const NoConnectionException&) = default;
    NoConnectionException& operator=(const NoConnectionException&) = default;
    ~NoConnectionException() override;
};

} // namespace orva

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/noconnectionexception.h"

namespace orva {

NoConnectionException::NoConnectionException(const tr::Tr& message) : Exception(message, QString())
{}

NoConnectionException::~NoConnectionException() = default;

} // namespace orva

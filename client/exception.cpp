// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/exception.h"

namespace orva {

Exception::Exception(const tr::Tr& message, const QString& detailText)
    : BasicException(message), detail(detailText)
{}

Exception::~Exception() = default;

} // namespace orva

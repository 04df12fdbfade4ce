// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/databasefailure.h"

namespace poshost {

DatabaseFailure::DatabaseFailure(const tr::Tr& message, const QString& file, const QString& cause)
    : BasicException(message), path(file), words(cause)
{}

DatabaseFailure::~DatabaseFailure() = default;

} // namespace poshost

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLoggingCategory>

namespace poshost {

/// What the delivery tells the log: each attempt on request, what went wrong always.
Q_DECLARE_LOGGING_CATEGORY(logDelivery)

} // namespace poshost

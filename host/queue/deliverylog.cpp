// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/deliverylog_p.h"

namespace poshost {

Q_LOGGING_CATEGORY(logDelivery, "poshost.delivery", QtInfoMsg)

} // namespace poshost

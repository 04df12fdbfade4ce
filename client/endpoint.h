// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "client/interface.h"

#include <QString>

namespace orva {

/// The endpoint's path below the server's address; empty for a value that is no request type.
QString endpointPath(Interface::RequestType type);

} // namespace orva

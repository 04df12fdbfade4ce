// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "protocol/names.h"

namespace simulator {

namespace names = protocol::names;

} // namespace simulator

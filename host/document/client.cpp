// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/client.h"

Client::Client() = default;

Client::~Client() = default;

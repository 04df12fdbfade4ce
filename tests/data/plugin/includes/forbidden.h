// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Never compiled: what the check of the plug-in's includes has to refuse.

#pragma once

#include "host/document/abstractdocument.h"
#include "host/document/document.h"

#include <host/database/database.h>

#include "simulator/documents/check.h"

#include "../till/slip.h"

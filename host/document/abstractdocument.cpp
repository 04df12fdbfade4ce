// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/abstractdocument.h"

AbstractDocument::AbstractDocument() = default;

AbstractDocument::~AbstractDocument() = default;

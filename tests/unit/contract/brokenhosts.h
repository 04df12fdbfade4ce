// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/hostundertest.h"

#include <QString>

#include <memory>

namespace tests {

/// A host with one thing wrong, by the thing's name; null for a name that is none.
///
/// - "defaults": documents give nothing where they should give the caller's default
/// - "extra": the queue drops the text that is to be kept with a message
/// - "statuses": the HTTP client takes an answer with a status from 400 up for a success
/// - "paths": inserting into a path that is there makes it anew beside it
std::unique_ptr<contract::HostUnderTest> brokenHost(const QString& name);

} // namespace tests

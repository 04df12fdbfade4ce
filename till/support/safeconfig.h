// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

class Config;

namespace till {

/// The configuration as it may be handed on: only keys that somebody has registered, secrets as
/// "***", addresses without what stands before "@". Comments and unknown keys, in which a secret
/// may stand as well, stay out.
QByteArray safeConfig(const Config& config);

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace till::doctor {

/// An address fit to be shown, well-formed or not: what may be a user, a password or a key in it is
/// replaced by "***". Hides too much rather than too little.
QString shownAddress(const QString& address);

} // namespace till::doctor

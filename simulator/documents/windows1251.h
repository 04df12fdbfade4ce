// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

namespace simulator {

/// A text in UTF-8 as windows-1251 has it; what that has not becomes a question mark.
QByteArray inWindows1251(const QByteArray& utf8);

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// Two texts beside each other, for reading: lines numbered, long ones folded.
namespace till::sidebyside {

QString columns(const QString& leftTitle, const QString& left, const QString& rightTitle,
                const QString& right);

/// One text, its lines numbered.
QString numbered(const QString& text);

} // namespace till::sidebyside

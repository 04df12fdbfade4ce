// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringView>

namespace orva {

/// Bit for bit what QStringView::toDouble() makes of the text, 0 for what is no number included;
/// quicker for the plain amounts that answers consist of.
double toNumber(QStringView text);

} // namespace orva

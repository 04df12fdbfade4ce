// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

namespace simulator {

/// The known name that takes the fewest single-character changes to reach from the given one, or
/// an empty text when none is near (more than a third of the name would have to change).
QString nearestName(const QString& name, const QStringList& known);

} // namespace simulator

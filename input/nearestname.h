// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

namespace input {

/// The known name that takes the fewest changes to reach from the given one, case aside: a
/// character inserted, deleted or replaced, or two neighbours swapped. An empty text when none is
/// near (more than a third of the name would have to change).
QString nearestName(const QString& name, const QStringList& known);

} // namespace input

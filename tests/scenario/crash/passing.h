// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

/// Where suspended checks are while they are passed on through a store in a file.
namespace passing {

/// Identifiers of those that the till, or the store, or both between them have.
QSet<QString> suspendedAnywhere(const QString& tillDatabase, const QString& storeDatabase);
/// What is wrong about checks that one till can restore and another can take up, a sentence each.
QStringList heldTwice(const QString& tillDatabase, const QString& storeDatabase);

} // namespace passing

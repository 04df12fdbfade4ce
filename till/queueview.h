// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/queueentry.h"

#include <QList>
#include <QString>

/// The outgoing queue as people and scripts read it.
namespace till::queueview {

QString table(const QList<QueueEntry>& entries);
QString json(const QList<QueueEntry>& entries);
/// One message; its secrets have been hidden already.
QString text(const QueueContent& content);
QString json(const QueueContent& content);

} // namespace till::queueview

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/queueentry.h"

#include <QList>
#include <QString>

/// Messages that are to be delivered, a till's or a store's, as people and scripts read them.
namespace console::queueview {

/// @param width how many characters fit on a line
QString table(const QList<poshost::QueueEntry>& entries, int width);
QString json(const QList<poshost::QueueEntry>& entries);
/// One message; its secrets have been hidden already.
QString text(const poshost::QueueContent& content, int width);
QString json(const poshost::QueueContent& content);

} // namespace console::queueview

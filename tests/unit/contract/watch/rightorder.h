// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/unit/contract/watch/watchedhost.h"

namespace tests {

// What a host does right, step by step, for broken hosts to begin with.

/// The card is presented and the system asked; its discounts are on the document.
void ask(WatchedHost& host, const QSharedPointer<Document>& document);
/// The customer pays with so many points.
void payWithPoints(WatchedHost& host, const QSharedPointer<Document>& document, double points);
/// The check is confirmed and laid down.
void close(WatchedHost& host, const QSharedPointer<Document>& document);
/// A whole sale.
void sell(WatchedHost& host, const QString& id);

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "store/sharedbooks.h"

namespace orvastore {

class Connection;

/// What was taken back of the sales of a shop. Every operation throws StoreError; one that
/// contradicts another return throws a conflict that names it.
namespace returnsbook {

/// @param which its identifier, or its number at whichever till
SaleToReturn find(Connection& connection, const QString& shop, const QString& which);
void reserve(Connection& connection, const Reservation& reservation);
void release(Connection& connection, const QString& shop, const QString& identifier);
/// What a return has reserved that is closed at its till is taken for good.
void close(Connection& connection, const QString& shop, const QString& identifier);
/// What a return takes is taken for good; in the transaction that keeps the return.
void settle(Connection& connection, const HandedCheck& check);

} // namespace returnsbook

} // namespace orvastore

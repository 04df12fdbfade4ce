// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/check.h"

#include <QByteArray>

/// A whole check as bytes for the till's database: fields, lines, card records, impacts with every
/// field and position sum, plug-in data, the cashier's choices.
namespace till::checkcodec {

QByteArray encode(const Check& check);

/// @throws Failure when the bytes are no check, are cut, or were written by a newer till.
Check decode(const QByteArray& bytes);

} // namespace till::checkcodec

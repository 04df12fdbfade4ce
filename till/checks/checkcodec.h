// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"

#include <QByteArray>

/// A whole check as bytes for the till's database: fields, lines, card records, impacts with every
/// field and position sum, plug-in data, the cashier's choices.
///
/// What is written bears the version that its newest field came with (FieldOf::since). Checks of
/// every older version are read: the fields that it did not have stay as in a new check, or are put
/// right as they say (FieldOf::fromOlder). Those of a newer version are refused with a sentence.
namespace till::checkcodec {

QByteArray encode(const Check& check);

/// Whatever the bytes are, the result is a check that can be worked with, or none.
/// @param name of the check, for the text of a failure
/// @throws Failure when the bytes are no check, are cut or changed, or were written by a newer till
Check decode(const QByteArray& bytes, const QString& name);

/// The sentence for what is stored of a check and cannot be used.
QString damagedText(const QString& name);

} // namespace till::checkcodec

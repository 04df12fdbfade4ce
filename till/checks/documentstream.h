// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/document.h"

#include <QDataStream>
#include <QSharedPointer>

/// A document, its goods lines left out, to and from a stream.
namespace till::documentstream {

void write(QDataStream& stream, const Document& document);
/// The version of stored checks that write needs, for its fields' sake.
int version();

/// @param version of the stored check
/// What cannot be read leaves the stream's status other than Ok.
QSharedPointer<Document> read(QDataStream& stream, int version);

} // namespace till::documentstream

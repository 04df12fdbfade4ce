// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/person/person.h"

#include <QByteArray>

namespace till {

class PersonMask;

/// Who a recording is about, and the recording without.
namespace personinrecord {

/// Cards and names in the lines of records.
/// @param content one or more records as they stand in a file
People of(const QByteArray& content);

/// The same lines with the people masked; lines without them stay byte for byte. A record that was
/// replayed identically still is.
QByteArray masked(const QByteArray& content, const PersonMask& mask);

} // namespace personinrecord

} // namespace till

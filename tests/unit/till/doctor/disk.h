// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

/// The disk of this test program: a statvfs that stands before the C library's.
namespace disk {

/// From now on so many bytes are free everywhere; 0: as many as there are.
void setFree(quint64 bytes);

} // namespace disk

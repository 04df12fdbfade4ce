// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Kinds of document. Documents report their kind as an int, since a host knows many more.
enum class EDocumentType : int
{
    /// Goods are sold.
    Sale = 1,
    /// A return made against an earlier sale, of all or a part of its lines.
    ReturnBySale = 25,
};

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"

#include <vector>

namespace simulator::edits {

/// Replaces all that an element holds by a text; nothing where there is no element.
void setText(const Element& element, const QString& text);

/// Gives every amount of a document, of money or of points, the text that write makes of it.
void rewriteAmounts(const Element& root, QString (*write)(const QString& text));

/// Gives all elements at a path the text that write makes of theirs.
void rewrite(const Element& root, std::initializer_list<QLatin1StringView> path,
             QString (*write)(const QString& text));

/// The goods lines.
std::vector<Element> lines(const Element& root);

/// The first element at a path, or none.
Element first(const Element& root, std::initializer_list<QLatin1StringView> path);

} // namespace simulator::edits

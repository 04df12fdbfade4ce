// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QDomDocument>
#include <QDomElement>
#include <QString>

namespace xmlutils {

/// Makes an element that holds a text.
/// @param document owns the new element
/// @param name the element's name, not checked
/// @param text what it holds, without escapes: they are made when the document is written. An empty
/// text gives a text node that is empty
/// @return the element, not yet attached
HOST_EXPORT QDomElement createTextElement(QDomDocument& document, const QString& name,
                                          const QString& text);

} // namespace xmlutils

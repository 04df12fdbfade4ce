// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QDomDocument>
#include <QDomElement>
#include <QString>

namespace xmlutils {

/// Returns a new element of that name, owned by the document and not yet attached, holding one text
/// node; an empty text gives a text node that is empty.
HOST_EXPORT QDomElement createTextElement(QDomDocument& document, const QString& name,
                                          const QString& text);

} // namespace xmlutils

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"

#include <QStringList>

#include <optional>

namespace simulator {

/// What is wrong with the form of a request, as the schemas in protocol/schema say it: the
/// elements, how many, in which order, and what their texts look like. One sentence that begins
/// with the element's path; nothing when the request fits.
///
/// A reader that asks only for what it uses would not notice a till that sends too little or too
/// much; this is for the rules' strict = true.
/// request: the root of a document that readXml has read.
/// endpoint: one of endpoints.
std::optional<QString> requestObjection(const Element& request, const QString& endpoint);

/// The same of everything that is wrong, in the order of the request: at most that many sentences.
QStringList requestObjections(const Element& request, const QString& endpoint, qsizetype most);
/// What a request that does not fit was held against and which of its fields are there, as one
/// sentence; where it would fit another address, that first.
QString closestForm(const Element& request, const QString& endpoint);

} // namespace simulator

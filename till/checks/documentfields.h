// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/document.h"
#include "till/checks/field.h"

#include <QList>

/// The fields of what a document is made of, in the order in which a check stores them. Not among
/// them: what refers to other objects (a card record's card, an impact's card record and its sums),
/// and the goods lines, which linefields describes.
namespace till::documentfields {

const QList<Field<Document>>& ofDocument();
const QList<Field<DocumentCardRecord>>& ofCardRecord();
const QList<Field<DocumentImpactDetail>>& ofImpactDetail();

} // namespace till::documentfields

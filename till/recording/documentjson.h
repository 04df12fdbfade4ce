// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/document.h"
#include "host/document/documentbonusrecord.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSharedPointer>

/// A document as a loyalty system sees it, to JSON and back: every field that the contracts show.
namespace till::documentjson {

/// Without what plug-ins keep in the document, which is apart, being large and seldom changed.
QJsonObject of(const Document& document);
/// What stands under "pluginData" beside the other fields.
QJsonObject ofPluginData(const QMap<QString, QVariantMap>& owners);
/// A document that answers as the written one did.
QSharedPointer<Document> toDocument(const QJsonObject& object);

QJsonObject ofCard(const DocumentCardRecord& record);
QSharedPointer<DocumentCardRecord> toCard(const QJsonObject& object);

/// Names the card of the impact by its number.
QJsonObject ofImpact(const DocumentImpact& impact);
QJsonObject ofBonusRecord(const DocumentBonusRecord& record);

} // namespace till::documentjson

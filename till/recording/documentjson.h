// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/document.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSharedPointer>

#include <string>

/// A document as a loyalty system sees it, to JSON and back: every field that the contracts show.
namespace till::documentjson {

/// Its fields but for the parts, and for what plug-ins keep in the document ("pluginData").
QJsonObject fieldsOf(const Document& document);

/// What a document has many of.
struct Part
{
    QString name;
    QJsonValue (*json)(const Document& document);
    /// Equal exactly where the JSON is equal, and made in a fraction of its time.
    std::string (*image)(const Document& document);
};
const QList<Part>& parts();

/// A document that answers as the written one did.
QSharedPointer<Document> toDocument(const QJsonObject& object);

QJsonObject ofCard(const DocumentCardRecord& record);
QSharedPointer<DocumentCardRecord> toCard(const QJsonObject& object);

} // namespace till::documentjson

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace tests {

/// A document and what it is, for messages.
struct WireDocument
{
    QString name;
    QByteArray text;
};

/// The schema in protocol/schema that a document is for, by what it holds: "sale-request",
/// "return-request", "answer", "sale-confirmation" or "acknowledgement". Empty for no check at all.
QString schemaFor(const QByteArray& document);

/// What xmllint says of documents against a schema: for each, in the same order, the objections one
/// a line, or nothing when it validates. Throws std::runtime_error when xmllint cannot be run, does
/// not take the schema, or gives a document no verdict.
QStringList objections(const QString& schema, const std::vector<WireDocument>& documents);

/// The path of a schema.
QString schemaFile(const QString& schema);

} // namespace tests

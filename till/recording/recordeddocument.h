// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <string>

class Document;

namespace till {

/// What was last written down of a document, to tell what has changed in it since. Large parts are
/// compared by an image of a few bytes a field and made JSON only where they have changed: a
/// record looks at the document before and after every call.
class RecordedDocument
{
public:
    /// What stands in the record for a plug-in's value.
    using Keep = std::function<QJsonValue(const QVariant&)>;

    /// The fields that are others than at the last call; all of them at the first one.
    QJsonObject changes(const Document& present, const Keep& keep);

private:
    bool takePluginData(const Document& present, const Keep& keep);
    QJsonObject ownersJson(const QMap<QString, QVariantMap>& owners, const Keep& keep) const;

    bool written = false;
    QJsonObject fields;
    QMap<QString, std::string> images;
    /// Held beside its JSON, which takes long to make: while the document still shares the data,
    /// nothing has changed in it.
    QMap<QString, QVariantMap> pluginData;
    QJsonObject pluginJson;
};

} // namespace till

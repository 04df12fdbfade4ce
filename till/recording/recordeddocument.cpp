// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordeddocument.h"

#include "host/document/document.h"
#include "till/recording/documentjson.h"
#include "till/recording/valuejson.h"

using namespace Qt::StringLiterals;

namespace till {

QJsonObject RecordedDocument::changes(const Document& present, const Keep& keep)
{
    QJsonObject changed;
    const QJsonObject now = documentjson::fieldsOf(present);
    for (auto it = now.begin(); it != now.end(); ++it) {
        if (!written || fields.value(it.key()) != it.value()) {
            changed.insert(it.key(), it.value());
        }
    }
    fields = now;
    for (const documentjson::Part& part : documentjson::parts()) {
        std::string image = part.image(present);
        if (!written || images.value(part.name) != image) {
            changed.insert(part.name, part.json(present));
            images.insert(part.name, image);
        }
    }
    if (takePluginData(present, keep)) {
        changed.insert(u"pluginData"_s, pluginJson);
    }
    written = true;
    return changed;
}

/// @return whether plug-ins keep something else in the document than when it was last written down
bool RecordedDocument::takePluginData(const Document& present, const Keep& keep)
{
    const QMap<QString, QVariantMap> data = present.getPluginData();
    if (written && data.isSharedWith(pluginData)) {
        return false;
    }
    const QJsonObject json = ownersJson(data, keep);
    const bool isOther = !written || json != pluginJson;
    pluginData = data;
    pluginJson = json;
    return isOther;
}

QJsonObject RecordedDocument::ownersJson(const QMap<QString, QVariantMap>& owners,
                                         const Keep& keep) const
{
    QJsonObject all;
    for (auto owner = owners.cbegin(); owner != owners.cend(); ++owner) {
        const QVariantMap before = pluginData.value(owner.key());
        const QJsonObject jsonBefore = pluginJson.value(owner.key()).toObject();
        QJsonObject json;
        for (auto it = owner->cbegin(); it != owner->cend(); ++it) {
            // other values of other types may be equal and are recorded differently
            const bool same = it->typeId() == QMetaType::QString &&
                              before.value(it.key()).typeId() == QMetaType::QString &&
                              before.value(it.key()) == *it;
            json.insert(it.key(),
                        same ? jsonBefore.value(it.key()) : keep(valuejson::ofVariant(it.value())));
        }
        all.insert(owner.key(), json);
    }
    return all;
}

} // namespace till

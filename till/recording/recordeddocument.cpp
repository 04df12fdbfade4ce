// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordeddocument.h"

#include "host/document/document.h"
#include "till/recording/documentjson.h"
#include "till/recording/valuejson.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

bool areSame(const QMap<QString, QVariantMap>& left, const QMap<QString, QVariantMap>& right)
{
    return std::equal(
        left.constKeyValueBegin(), left.constKeyValueEnd(), right.constKeyValueBegin(),
        right.constKeyValueEnd(), [](const auto& one, const auto& other) {
            return one.first == other.first && valuejson::areSame(one.second, other.second);
        });
}

} // namespace

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
    if (written && (data.isSharedWith(pluginData) || areSame(data, pluginData))) {
        pluginData = data;
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
            const bool same =
                before.contains(it.key()) && valuejson::areSame(before.value(it.key()), it.value());
            json.insert(it.key(), same ? jsonBefore.value(it.key()) : keep(it.value()));
        }
        all.insert(owner.key(), json);
    }
    return all;
}

} // namespace till

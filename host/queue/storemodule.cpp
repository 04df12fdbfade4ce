// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/storemodule_p.h"

#include <QJsonObject>
#include <QPluginLoader>

template class MockFactory<poshost::StoreModule>;

namespace poshost {

using namespace Qt::StringLiterals;

StoreModule::~StoreModule() = default;

/// The library stays in the process: what it has made may be in use to the end.
QSharedPointer<orvastore::StoreClient> StoreModule::load(const QString& file, Message& problem)
{
    QPluginLoader loader(file);
    const QString iid = loader.metaData().value("IID"_L1).toString();
    if (!iid.isEmpty() &&
        iid != QLatin1StringView(qobject_interface_iid<orvastore::StoreClient*>())) {
        problem = Message::of("store.otherModule", file, iid);
        return {};
    }
    QObject* const object = loader.instance();
    auto* const client = qobject_cast<orvastore::StoreClient*>(object);
    if (client == nullptr) {
        problem = Message::of("store.noModule", file, loader.errorString());
        return {};
    }
    return {client, [object](orvastore::StoreClient*) { delete object; }};
}

} // namespace poshost

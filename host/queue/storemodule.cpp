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
QSharedPointer<orvastore::StoreDriver> StoreModule::load(const QString& file, Message& problem)
{
    QPluginLoader loader(file);
    const QString iid = loader.metaData().value("IID"_L1).toString();
    if (!iid.isEmpty() &&
        iid != QLatin1StringView(qobject_interface_iid<orvastore::StoreDriver*>())) {
        problem = Message::of("store.otherModule", file, iid);
        return {};
    }
    auto* const driver = qobject_cast<orvastore::StoreDriver*>(loader.instance());
    if (driver == nullptr) {
        problem = Message::of("store.noModule", file, loader.errorString());
        return {};
    }
    return {driver, [](orvastore::StoreDriver*) {}}; // the loader's
}

} // namespace poshost

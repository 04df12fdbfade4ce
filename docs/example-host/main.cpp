// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A till that loads every plug-in it finds and says whether the plug-in can work:
// example-till [FOLDER]

#include "host/loyalty/basicloyaltysystem.h"
#include "host/loyalty/plugincontract.h"
#include "host/services/config.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QPluginLoader>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString folder = application.arguments().value(1, QStringLiteral(PLUGIN_FOLDER));
    // a plug-in that finds no configuration would make one that is empty
    Config config;
    Singleton<Config>::instance = &config;
    int working = 0;
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files)) {
        if (!QLibrary::isLibrary(file.fileName())) {
            continue; // what a plug-in brings along
        }
        namespace plugincontract = poshost::plugincontract;
        const auto contract = plugincontract::versionNeededBy(file.filePath());
        if (contract.value_or(plugincontract::version()) != plugincontract::version()) {
            std::printf("%s: built for version %d of the contract, this till has version %d\n",
                        qPrintable(file.fileName()), *contract, plugincontract::version());
            continue;
        }
        QPluginLoader loader(file.filePath());
        auto* const plugin = qobject_cast<BasicPlugin*>(loader.instance());
        auto* const system = qobject_cast<BasicLoyaltySystem*>(loader.instance());
        if (plugin == nullptr || system == nullptr) {
            std::printf("%s: %s\n", qPrintable(file.fileName()), qPrintable(loader.errorString()));
            continue;
        }
        if (plugin->init()) {
            std::printf("%s: loyalty system %d works\n", qPrintable(file.fileName()),
                        system->getLoyaltySystemType());
            ++working;
        }
        plugin->deinit();
        delete loader.instance();
    }
    Singleton<Config>::instance = nullptr;
    return working > 0 ? 0 : 1;
}

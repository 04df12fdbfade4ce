// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A till that loads every plug-in it finds and says whether the plug-in can work.

#include "host/loyalty/basicloyaltysystem.h"

#include <QCoreApplication>
#include <QDir>
#include <QPluginLoader>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    int working = 0;
    for (const QFileInfo& file : QDir(QStringLiteral(PLUGIN_FOLDER)).entryInfoList(QDir::Files)) {
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
    return working > 0 ? 0 : 1;
}

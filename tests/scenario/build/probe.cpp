// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Loads the plug-in named by the first argument, asks it for each interface named by the others
// and initialises it through the last one found. Links no host: the plug-in brings its own.

#include "host/loyalty/basicplugin.h"

#include <QPluginLoader>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: probe plug-in [interface...]\n");
        return 2;
    }
    QPluginLoader loader(QString::fromLocal8Bit(argv[1]));
    QObject* const object = loader.instance();
    if (object == nullptr) {
        std::fprintf(stderr, "%s\n", loader.errorString().toLocal8Bit().constData());
        return 1;
    }
    BasicPlugin* plugin = nullptr;
    for (int i = 2; i < argc; ++i) {
        void* const found = object->qt_metacast(argv[i]);
        std::printf("cast: %s %s\n", argv[i], found == nullptr ? "null" : "found");
        std::fflush(stdout);
        if (found != nullptr) {
            plugin = static_cast<BasicPlugin*>(found);
        }
    }
    if (plugin != nullptr) {
        std::printf("init: %s\n", plugin->init() ? "true" : "false");
    }
    delete object;
    return 0;
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/loadedplugin.h"

#include <stdexcept>

namespace bench {

LoadedPlugin::LoadedPlugin()
    : loader(QStringLiteral(ORVA_PLUGIN_FILE)),
      system(qobject_cast<BasicLoyaltySystem*>(loader.instance()))
{
    if (system == nullptr || !system->init()) {
        throw std::runtime_error("the plug-in does not load: " +
                                 loader.errorString().toStdString());
    }
}

LoadedPlugin::~LoadedPlugin()
{
    system->deinit();
    delete loader.instance();
}

} // namespace bench

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/basicloyaltysystem.h"

#include <QObject>

/// A loyalty system that does not answer as a plug-in of this host.
class WithoutPluginInterface : public QObject, public BasicLoyaltySystem
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")
    Q_INTERFACES(BasicLoyaltySystem)
};

#include "withoutplugininterface.moc"

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/plugins/othercontract.h"

/// A loyalty plug-in built for another version of the contract, with its host library beside it.
class OtherContract : public QObject, public BasicLoyaltySystem
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")
    Q_INTERFACES(BasicLoyaltySystem BasicPlugin)
};

#include "othercontract.moc"

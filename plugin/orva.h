// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "client/interface.h"
#include "host/loyalty/basicloyaltysystem.h"

#include <QObject>

namespace Log4Qt {
class Logger;
}

namespace orva {
class Exception;
}

/// The loyalty system that the host loads: it passes the host's calls on to the server client and
/// keeps in the document what must survive a restart.
///
/// Made by Qt's plug-in loader, one object a process at a time. All calls on the host thread; only
/// identifyByCard and request may block, for the configured time-out. Only these two catch the
/// client's exceptions; all other operations let them pass to the host.
class Orva : public QObject, public BasicLoyaltySystem
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")
    Q_INTERFACES(BasicLoyaltySystem BasicPlugin)

public:
    Orva();
    ~Orva() override;

    /// Reads the configuration, hands it to the client and registers the loyalty system.
    /// Validates nothing. @return whether the host registered it
    bool init() override;
    bool identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                        ECardNumberType type) override;
    bool request(const QSharedPointer<AbstractDocument>& check) override;
    bool commit(const QSharedPointer<AbstractDocument>& check) override;
    bool rollback(const QSharedPointer<AbstractDocument>& check) override;
    double getPointsForSpend(const QSharedPointer<AbstractDocument>& check) override;
    void setPointsForSpend(const QSharedPointer<AbstractDocument>& check, double points) override;
    bool spendPoints() override;
    bool restoreLoyaltySystem() override;
    bool recalculatePointsForEarn() override;

    /// Writes the last answer and the bonus records into the session's document.
    virtual void updatePluginData() const;

private:
    bool fail(const orva::Exception& exception);

protected:
    /// The server client, owned by the plug-in alone.
    QSharedPointer<orva::Interface> interface;
    /// The logger "orva", not owned.
    Log4Qt::Logger* logger;
};

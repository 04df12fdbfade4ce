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
/// client's exceptions; all other operations let them pass to the host. What needs a document, its
/// card record or its card and finds none is refused or left out, as each operation says.
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
    /// Fails without a document in the session, without a record and with one that has no card.
    bool identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                        ECardNumberType type) override;
    /// Fails without a document, on one without a record and with a record that has no card.
    bool request(const QSharedPointer<AbstractDocument>& check) override;
    /// Throws without a document, and for a return by sale without a card record; queues nothing
    /// then.
    bool commit(const QSharedPointer<AbstractDocument>& check) override;
    bool rollback(const QSharedPointer<AbstractDocument>& check) override;
    /// Without a document there is nothing to pay, so no points to spend.
    double getPointsForSpend(const QSharedPointer<AbstractDocument>& check) override;
    void setPointsForSpend(const QSharedPointer<AbstractDocument>& check, double points) override;
    /// Makes no impacts without a document or on one without a card record.
    bool spendPoints() override;
    /// Takes no points from a missing card record; without a document nothing was kept, which
    /// leaves an empty last answer.
    bool restoreLoyaltySystem() override;
    /// Without a card record only that is left out; without a document there is no sum to scale to,
    /// so the records stay and nothing is earned.
    bool recalculatePointsForEarn() override;

    /// Writes the last answer and the bonus records into the session's document; without one it
    /// says so in the log.
    virtual void updatePluginData() const;

private:
    bool fail(const orva::Exception& exception);
    /// The document's record of this system; null when either is missing.
    QSharedPointer<DocumentCardRecord>
    cardRecordOf(const QSharedPointer<AbstractDocument>& check) const;
    /// Takes the record's points over; 0 where there is no record.
    void takePoints(const QSharedPointer<DocumentCardRecord>& cardRecord);
    QList<QSharedPointer<BonusImpact>>
    makeBonusImpacts(const QSharedPointer<DocumentCardRecord>& cardRecord, double sum) const;

protected:
    /// The server client, owned by the plug-in alone.
    QSharedPointer<orva::Interface> interface;
    /// The logger "orva", not owned.
    Log4Qt::Logger* logger;
};

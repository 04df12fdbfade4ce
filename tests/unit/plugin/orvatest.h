// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "client/exception.h"
#include "client/noconnectionexception.h"
#include "host/document/discountimpact.h"
#include "plugin/orva.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/printers.h"
#include "tests/unit/plugin/recordinginterface.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace tests {

/// The plug-in class with its state in reach.
class OpenOrva : public Orva
{
public:
    using Orva::bonusImpactsForSpend;
    using Orva::bonusRecords;
    using Orva::discountImpacts;
    using Orva::document;
    using Orva::interface;
    using Orva::lastError;
    using Orva::logger;
    using Orva::loyaltySystemType;
    using Orva::messagesToCashier;
    using Orva::messagesToClient;
    using Orva::pointsForEarn;
    using Orva::pointsForSpend;
};

/// What the host keeps of a loyalty system, to compare before and after.
struct State
{
    explicit State(const OpenOrva& orva)
        : pointsForSpend(orva.pointsForSpend), pointsForEarn(orva.pointsForEarn),
          discountImpacts(orva.discountImpacts), bonusImpacts(orva.bonusImpactsForSpend),
          bonusRecords(orva.bonusRecords), toCashier(orva.messagesToCashier),
          toClient(orva.messagesToClient)
    {}

    bool operator==(const State& other) const
    {
        return pointsForSpend == other.pointsForSpend && pointsForEarn == other.pointsForEarn &&
               discountImpacts == other.discountImpacts && bonusImpacts == other.bonusImpacts &&
               bonusRecords == other.bonusRecords && toCashier == other.toCashier &&
               toClient == other.toClient;
    }

    double pointsForSpend;
    double pointsForEarn;
    QList<QSharedPointer<DocumentImpact>> discountImpacts;
    QList<QSharedPointer<BonusImpact>> bonusImpacts;
    QList<DocumentBonusRecord> bonusRecords;
    QStringList toCashier;
    QStringList toClient;
};

inline QSharedPointer<DocumentImpact> discountImpact()
{
    return QSharedPointer<DiscountImpact>::create(QSharedPointer<DocumentImpactDetail>::create());
}

inline QSharedPointer<BonusImpact> bonusImpact()
{
    return QSharedPointer<BonusImpact>::create(QSharedPointer<DocumentImpactDetail>::create());
}

inline DocumentBonusRecord bonusRecord(double amount, int position = 1)
{
    DocumentBonusRecord record;
    record.bonusAmount = amount;
    record.position = position;
    return record;
}

/// The plug-in class on doubles of everything around it. The session's document and the one that
/// the base keeps are two, so that it shows which of them is asked.
class OrvaTest : public ::testing::Test
{
protected:
    OrvaTest()
    {
        orva.interface = interface;
        orva.setDocument(base);
        session.setDocument(open);
        base->cardRecord = record;
        open->cardRecord = otherRecord;
    }

    /// Fills the base with values that no operation produces by chance.
    void fillState()
    {
        orva.pointsForSpend = 77;
        orva.pointsForEarn = 7;
        orva.discountImpacts = {discountImpact()};
        orva.bonusImpactsForSpend = {bonusImpact()};
        orva.bonusRecords = {bonusRecord(7, 7)};
        orva.messagesToCashier = {QStringLiteral("прежнее кассиру")};
        orva.messagesToClient = {QStringLiteral("прежнее клиенту")};
        orva.lastError = oldError;
    }

    static QSharedPointer<DocumentCardRecord> makeRecord(const QString& number)
    {
        return QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>::create(number), 15,
                                                          9);
    }

    /// What writing the state into the session's document leaves in the journal.
    static QStringList writingOfState()
    {
        return {QStringLiteral("debug: Запись в документ данных системы лояльности"),
                QStringLiteral("session.getDocument()"),
                QStringLiteral("interface.getLastResponse()"),
                QStringLiteral("open.setPluginValue(Orva, lastResponse)"),
                QStringLiteral("open.setPluginValue(Orva, bonusRecords)")};
    }

    const tr::Tr oldError{QStringLiteral("old"), QStringLiteral("прежняя ошибка")};
    const QSharedPointer<DocumentCardRecord> record = makeRecord(QStringLiteral("77"));
    const QSharedPointer<DocumentCardRecord> otherRecord = makeRecord(QStringLiteral("88"));
    const QSharedPointer<RecordingDocument> base =
        QSharedPointer<RecordingDocument>::create(QStringLiteral("base"));
    const QSharedPointer<RecordingDocument> open =
        QSharedPointer<RecordingDocument>::create(QStringLiteral("open"));
    const QSharedPointer<RecordingInterface> interface =
        QSharedPointer<RecordingInterface>::create();
    RecordingSession session;
    const InSingleton<Session> sessionInPlace{&session};
    OpenOrva orva;
    Journal journal;
};

} // namespace tests

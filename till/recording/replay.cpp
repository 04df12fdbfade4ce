// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/replay.h"

#include "till/desk/pluginhost.h"
#include "till/failure.h"
#include "till/recording/documentjson.h"
#include "till/recording/memorytarget.h"
#include "till/recording/recording.h"
#include "till/recording/replayservices.h"
#include "till/recording/valuejson.h"
#include "till/text.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// What a call is made with.
struct Input
{
    QSharedPointer<Document> document;
    QSharedPointer<DocumentCardRecord> card;
    QJsonObject arguments;
};

using HostCall = void (*)(BasicLoyaltySystem&, Input&);

const QHash<QString, HostCall>& hostCalls()
{
    using System = BasicLoyaltySystem;
    static const QHash<QString, HostCall> calls{
        {u"identifyByCard"_s,
         [](System& system, Input& input) {
             const int type = input.arguments.value("numberType"_L1).toInt();
             system.identifyByCard(input.card, ECardNumberType(type));
         }},
        {u"request"_s, [](System& system, Input& input) { system.request(input.document); }},
        {u"commit"_s, [](System& system, Input& input) { system.commit(input.document); }},
        {u"rollback"_s, [](System& system, Input& input) { system.rollback(input.document); }},
        {u"spendPoints"_s, [](System& system, Input&) { system.spendPoints(); }},
        {u"recalculatePointsForEarn"_s,
         [](System& system, Input&) { system.recalculatePointsForEarn(); }},
        {u"getPointsForSpend"_s,
         [](System& system, Input& input) { system.getPointsForSpend(input.document); }},
        {u"setPointsForSpend"_s,
         [](System& system, Input& input) {
             const double points = valuejson::toNumber(input.arguments.value("points"_L1));
             system.setPointsForSpend(input.document, points);
         }},
        {u"getPointsForEarn"_s, [](System& system, Input&) { system.getPointsForEarn(); }},
        {u"getDiscountImpacts"_s, [](System& system, Input&) { system.getDiscountImpacts(); }},
        {u"getBonusImpactsForSpend"_s,
         [](System& system, Input&) { system.getBonusImpactsForSpend(); }},
        {u"getBonusRecords"_s, [](System& system, Input&) { system.getBonusRecords(); }},
        {u"getMessagesToCashier"_s, [](System& system, Input&) { system.getMessagesToCashier(); }},
        {u"getMessagesToClient"_s, [](System& system, Input&) { system.getMessagesToClient(); }},
        {u"getLastErrorString"_s, [](System& system, Input&) { system.getLastErrorString(); }},
        {u"clearLastErrorString"_s, [](System& system, Input&) { system.clearLastErrorString(); }},
        {u"restoreLoyaltySystem"_s, [](System& system, Input&) { system.restoreLoyaltySystem(); }},
        {u"clearAfterClose"_s, [](System& system, Input&) { system.clearAfterClose(); }},
        {u"clearLoyaltyData"_s, [](System& system, Input&) { system.clearLoyaltyData(); }},
    };
    return calls;
}

Input inputOf(const Record& record, const QJsonObject& call)
{
    Input input;
    input.document = documentjson::toDocument(record.document(call.value("before"_L1).toInt(-1)));
    if (call.contains("card"_L1)) {
        input.card = documentjson::toCard(call.value("card"_L1).toObject());
    }
    input.arguments = call.value("arguments"_L1).toObject();
    return input;
}

/// The contract promises a card to the calls that work on one; a record that has been edited may
/// break the promise.
void requireCard(const QString& name, const Input& input, const BasicLoyaltySystem& system)
{
    static const QStringList withCard{u"request"_s, u"commit"_s, u"spendPoints"_s,
                                      u"recalculatePointsForEarn"_s, u"restoreLoyaltySystem"_s};
    const auto record = name == u"identifyByCard"_s
                            ? input.card
                            : input.document->getCardRecord(system.getLoyaltySystemType());
    const bool needsCard = name == u"identifyByCard"_s || withCard.contains(name);
    if (needsCard && (record.isNull() || record->getCard().isNull())) {
        throw Failure(Text::tr("The record is damaged: the call \"%1\" has no card.").arg(name));
    }
}

HostCall hostCall(const QJsonObject& call)
{
    const QString name = call.value("call"_L1).toString();
    const HostCall found = hostCalls().value(name);
    if (found == nullptr) {
        throw Failure(Text::tr("The record has a call \"%1\", which this till does not know; "
                               "replay it with the till that recorded it.")
                          .arg(name));
    }
    return found;
}

} // namespace

QList<Record> Replay::run(const Record& record) const
{
    ReplayServices services(record);
    MemoryTarget target;
    Recording recording(target, file, record.header.value("session"_L1).toString());
    const PluginHost plugin(file);
    BasicLoyaltySystem& system = recording.before(plugin.loyaltySystem());
    for (const QJsonObject& call : record.calls) {
        const HostCall perform = hostCall(call);
        Input input = inputOf(record, call);
        requireCard(call.value("call"_L1).toString(), input, system);
        services.feed.begin(call.value("events"_L1).toArray());
        services.session.setDocument(input.document);
        system.setDocument(input.document);
        try {
            perform(system, input);
        } catch (const std::exception&) {
            continue; // is in the record, as it was then
        }
    }
    services.session.setDocument({});
    return target.records();
}

} // namespace till

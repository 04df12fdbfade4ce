// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordingloyalty.h"

#include "till/recording/documentjson.h"
#include "till/recording/valuejson.h"

#include <type_traits>

using namespace Qt::StringLiterals;

namespace till {
namespace {

QJsonValue resultOf(bool value)
{
    return value;
}

QJsonValue resultOf(double value)
{
    return valuejson::ofNumber(value);
}

QJsonValue resultOf(const QStringList& texts)
{
    return QJsonArray::fromStringList(texts);
}

QJsonValue resultOf(const tr::Tr& text)
{
    return QJsonObject{{u"id"_s, text.id()}, {u"text"_s, text.ru()}};
}

QJsonValue resultOf(const QList<DocumentBonusRecord>& records)
{
    QJsonArray array;
    for (const DocumentBonusRecord& record : records) {
        array.append(documentjson::ofBonusRecord(record));
    }
    return array;
}

template <typename Impact>
QJsonValue resultOf(const QList<QSharedPointer<Impact>>& impacts)
{
    QJsonArray array;
    for (const auto& impact : impacts) {
        const bool whole = !impact.isNull() && !impact->getTotals().isNull();
        array.append(whole ? QJsonValue(documentjson::ofImpact(*impact)) : QJsonValue());
    }
    return array;
}

} // namespace

RecordingLoyalty::RecordingLoyalty(BasicLoyaltySystem& loyaltySystem, Recorder& journal)
    : system(loyaltySystem), recorder(journal)
{
    loyaltySystemType = system.getLoyaltySystemType();
}

template <typename Operation>
auto RecordingLoyalty::recorded(const QString& name, const Recorder::Given& given,
                                Operation operation) const
{
    // the document is set without this object noticing
    system.setDocument(document);
    recorder.begin(name, given);
    try {
        if constexpr (std::is_void_v<decltype(operation())>) {
            operation();
            recorder.end([] { return QJsonValue(); });
        } else {
            const auto result = operation();
            recorder.end([&] { return resultOf(result); });
            return result;
        }
    } catch (const std::exception& error) {
        recorder.fail(&error);
        throw;
    } catch (...) {
        recorder.fail(nullptr);
        throw;
    }
}

bool RecordingLoyalty::identifyByCard(QSharedPointer<DocumentCardRecord>& cardRecord,
                                      ECardNumberType type)
{
    const Recorder::Given given{document, cardRecord, {{u"numberType"_s, int(type)}}};
    return recorded(u"identifyByCard"_s, given,
                    [&] { return system.identifyByCard(cardRecord, type); });
}

bool RecordingLoyalty::request(const QSharedPointer<AbstractDocument>& check)
{
    return recorded(u"request"_s, {check, {}, {}}, [&] { return system.request(check); });
}

bool RecordingLoyalty::commit(const QSharedPointer<AbstractDocument>& check)
{
    return recorded(u"commit"_s, {check, {}, {}}, [&] { return system.commit(check); });
}

bool RecordingLoyalty::rollback(const QSharedPointer<AbstractDocument>& check)
{
    return recorded(u"rollback"_s, {check, {}, {}}, [&] { return system.rollback(check); });
}

bool RecordingLoyalty::spendPoints()
{
    return recorded(u"spendPoints"_s, {document, {}, {}}, [&] { return system.spendPoints(); });
}

bool RecordingLoyalty::recalculatePointsForEarn()
{
    return recorded(u"recalculatePointsForEarn"_s, {document, {}, {}},
                    [&] { return system.recalculatePointsForEarn(); });
}

double RecordingLoyalty::getPointsForSpend(const QSharedPointer<AbstractDocument>& check)
{
    return recorded(u"getPointsForSpend"_s, {check, {}, {}},
                    [&] { return system.getPointsForSpend(check); });
}

void RecordingLoyalty::setPointsForSpend(const QSharedPointer<AbstractDocument>& check,
                                         double points)
{
    const QJsonObject arguments{{u"points"_s, valuejson::ofNumber(points)}};
    recorded(u"setPointsForSpend"_s, {check, {}, arguments},
             [&] { system.setPointsForSpend(check, points); });
}

double RecordingLoyalty::getPointsForEarn()
{
    return recorded(u"getPointsForEarn"_s, {document, {}, {}},
                    [&] { return system.getPointsForEarn(); });
}

QList<QSharedPointer<DocumentImpact>> RecordingLoyalty::getDiscountImpacts()
{
    return recorded(u"getDiscountImpacts"_s, {document, {}, {}},
                    [&] { return system.getDiscountImpacts(); });
}

QList<QSharedPointer<BonusImpact>> RecordingLoyalty::getBonusImpactsForSpend()
{
    return recorded(u"getBonusImpactsForSpend"_s, {document, {}, {}},
                    [&] { return system.getBonusImpactsForSpend(); });
}

QList<DocumentBonusRecord> RecordingLoyalty::getBonusRecords()
{
    return recorded(u"getBonusRecords"_s, {document, {}, {}},
                    [&] { return system.getBonusRecords(); });
}

QStringList RecordingLoyalty::getMessagesToCashier()
{
    return recorded(u"getMessagesToCashier"_s, {document, {}, {}},
                    [&] { return system.getMessagesToCashier(); });
}

QStringList RecordingLoyalty::getMessagesToClient()
{
    return recorded(u"getMessagesToClient"_s, {document, {}, {}},
                    [&] { return system.getMessagesToClient(); });
}

tr::Tr RecordingLoyalty::getLastErrorString() const
{
    return recorded(u"getLastErrorString"_s, {document, {}, {}},
                    [&] { return system.getLastErrorString(); });
}

void RecordingLoyalty::clearLastErrorString()
{
    recorded(u"clearLastErrorString"_s, {document, {}, {}}, [&] { system.clearLastErrorString(); });
}

bool RecordingLoyalty::restoreLoyaltySystem()
{
    return recorded(u"restoreLoyaltySystem"_s, {document, {}, {}},
                    [&] { return system.restoreLoyaltySystem(); });
}

void RecordingLoyalty::clearAfterClose()
{
    recorded(u"clearAfterClose"_s, {document, {}, {}}, [&] { system.clearAfterClose(); });
}

void RecordingLoyalty::clearLoyaltyData()
{
    recorded(u"clearLoyaltyData"_s, {document, {}, {}}, [&] { system.clearLoyaltyData(); });
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordingloyalty.h"

#include "till/recording/longlists.h"
#include "till/recording/valuejson.h"

#include <algorithm>
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
    return longlists::of(
        records, [](const auto& record) -> const auto& { return record; });
}

template <typename Impact>
QJsonValue resultOf(const QList<QSharedPointer<Impact>>& impacts)
{
    const auto isWhole = [](const auto& impact) {
        return !impact.isNull() && !impact->getTotals().isNull();
    };
    if (std::all_of(impacts.cbegin(), impacts.cend(), isWhole)) {
        return longlists::of(
            impacts, [](const auto& impact) -> const auto& { return *impact; });
    }
    QJsonArray array;
    JsonSeries series;
    for (const auto& impact : impacts) {
        array.append(isWhole(impact) ? QJsonValue(series.of(*impact)) : QJsonValue());
    }
    return array;
}

} // namespace

RecordingLoyalty::RecordingLoyalty(BasicLoyaltySystem& loyaltySystem, Recorder& journal)
    : ForwardingLoyalty(loyaltySystem), recorder(journal)
{}

template <typename Operation>
auto RecordingLoyalty::recorded(const QString& name, const Recorder::Given& given,
                                Operation operation) const
{
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
                    [&] { return watching().identifyByCard(cardRecord, type); });
}

bool RecordingLoyalty::request(const QSharedPointer<AbstractDocument>& check)
{
    return recorded(u"request"_s, {check, {}, {}}, [&] { return watching().request(check); });
}

bool RecordingLoyalty::commit(const QSharedPointer<AbstractDocument>& check)
{
    return recorded(u"commit"_s, {check, {}, {}}, [&] { return watching().commit(check); });
}

bool RecordingLoyalty::rollback(const QSharedPointer<AbstractDocument>& check)
{
    return recorded(u"rollback"_s, {check, {}, {}}, [&] { return watching().rollback(check); });
}

bool RecordingLoyalty::spendPoints()
{
    return recorded(u"spendPoints"_s, {document, {}, {}}, [&] { return watching().spendPoints(); });
}

bool RecordingLoyalty::recalculatePointsForEarn()
{
    return recorded(u"recalculatePointsForEarn"_s, {document, {}, {}},
                    [&] { return watching().recalculatePointsForEarn(); });
}

double RecordingLoyalty::getPointsForSpend(const QSharedPointer<AbstractDocument>& check)
{
    return recorded(u"getPointsForSpend"_s, {check, {}, {}},
                    [&] { return watching().getPointsForSpend(check); });
}

void RecordingLoyalty::setPointsForSpend(const QSharedPointer<AbstractDocument>& check,
                                         double points)
{
    const QJsonObject arguments{{u"points"_s, valuejson::ofNumber(points)}};
    recorded(u"setPointsForSpend"_s, {check, {}, arguments},
             [&] { watching().setPointsForSpend(check, points); });
}

double RecordingLoyalty::getPointsForEarn()
{
    return recorded(u"getPointsForEarn"_s, {document, {}, {}},
                    [&] { return watching().getPointsForEarn(); });
}

QList<QSharedPointer<DocumentImpact>> RecordingLoyalty::getDiscountImpacts()
{
    return recorded(u"getDiscountImpacts"_s, {document, {}, {}},
                    [&] { return watching().getDiscountImpacts(); });
}

QList<QSharedPointer<BonusImpact>> RecordingLoyalty::getBonusImpactsForSpend()
{
    return recorded(u"getBonusImpactsForSpend"_s, {document, {}, {}},
                    [&] { return watching().getBonusImpactsForSpend(); });
}

QList<DocumentBonusRecord> RecordingLoyalty::getBonusRecords()
{
    return recorded(u"getBonusRecords"_s, {document, {}, {}},
                    [&] { return watching().getBonusRecords(); });
}

QStringList RecordingLoyalty::getMessagesToCashier()
{
    return recorded(u"getMessagesToCashier"_s, {document, {}, {}},
                    [&] { return watching().getMessagesToCashier(); });
}

QStringList RecordingLoyalty::getMessagesToClient()
{
    return recorded(u"getMessagesToClient"_s, {document, {}, {}},
                    [&] { return watching().getMessagesToClient(); });
}

tr::Tr RecordingLoyalty::getLastErrorString() const
{
    return recorded(u"getLastErrorString"_s, {document, {}, {}},
                    [&] { return watching().getLastErrorString(); });
}

void RecordingLoyalty::clearLastErrorString()
{
    recorded(u"clearLastErrorString"_s, {document, {}, {}},
             [&] { watching().clearLastErrorString(); });
}

bool RecordingLoyalty::restoreLoyaltySystem()
{
    return recorded(u"restoreLoyaltySystem"_s, {document, {}, {}},
                    [&] { return watching().restoreLoyaltySystem(); });
}

void RecordingLoyalty::clearAfterClose()
{
    recorded(u"clearAfterClose"_s, {document, {}, {}}, [&] { watching().clearAfterClose(); });
}

void RecordingLoyalty::clearLoyaltyData()
{
    recorded(u"clearLoyaltyData"_s, {document, {}, {}}, [&] { watching().clearLoyaltyData(); });
}

} // namespace till

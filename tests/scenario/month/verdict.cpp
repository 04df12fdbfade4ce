// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/month/verdict.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace month {
namespace {

constexpr int accepted = 200;

/// The checks whose confirmation was taken, in that order, and the refusals.
QStringList takenChecks(const QList<Arrival>& arrivals, QStringList& wrong)
{
    QStringList taken;
    for (const Arrival& arrival : arrivals) {
        if (arrival.status != accepted) {
            wrong.append(u"check %1: %2 was answered with %3"_s.arg(
                arrival.check, QString::fromLatin1(arrival.endpoint),
                QString::number(arrival.status)));
        } else if (arrival.endpoint == "checkconfirm") {
            taken.append(arrival.check);
        }
    }
    return taken;
}

void compareCounts(const QList<Queued>& queue, const QStringList& taken, QStringList& wrong)
{
    QHash<QString, int> times;
    for (const QString& check : taken) {
        ++times[check];
    }
    for (const Queued& message : queue) {
        const int count = times.take(message.check);
        if (count != 1) {
            wrong.append(count == 0
                             ? u"check %1 is lost"_s.arg(message.check)
                             : u"check %1 was confirmed %2 times"_s.arg(message.check).arg(count));
        }
    }
    for (auto it = times.cbegin(); it != times.cend(); ++it) {
        wrong.append(u"check %1 was confirmed and never queued"_s.arg(it.key()));
    }
}

void compareOrder(const QList<Queued>& queue, const QStringList& taken, QStringList& wrong)
{
    for (qsizetype i = 0; i < std::min(queue.size(), taken.size()); ++i) {
        if (queue.at(i).check != taken.at(i)) {
            wrong.append(
                u"place %1 of the queue is check %2, the server confirmed %3 there"_s.arg(i + 1)
                    .arg(queue.at(i).check, taken.at(i)));
            return;
        }
    }
}

/// A return's first request, whichever it is, comes after its sale was confirmed.
void compareSales(const QList<Queued>& queue, const QList<Arrival>& arrivals, QStringList& wrong)
{
    QHash<QString, QString> saleOf;
    for (const Queued& message : queue) {
        saleOf.insert(message.check, message.sale);
    }
    QSet<QString> confirmed;
    for (const Arrival& arrival : arrivals) {
        const QString sale = saleOf.value(arrival.check);
        if (!sale.isEmpty() && !confirmed.contains(sale)) {
            wrong.append(u"the return %1 came before its sale %2"_s.arg(arrival.check, sale));
        }
        if (arrival.endpoint == "checkconfirm" && arrival.status == accepted) {
            confirmed.insert(arrival.check);
        }
    }
}

} // namespace

QStringList complaints(const QList<Queued>& queue, const QList<Arrival>& arrivals)
{
    QStringList wrong;
    const QStringList taken = takenChecks(arrivals, wrong);
    compareCounts(queue, taken, wrong);
    compareOrder(queue, taken, wrong);
    compareSales(queue, arrivals, wrong);
    return wrong;
}

QStringList memoryComplaints(qint64 smallPeak, qint64 largePeak)
{
    constexpr qint64 whole = 100;
    QStringList wrong;
    if (std::max(smallPeak, largePeak) >= mostMemory) {
        wrong.append(u"the delivery took %1 KiB, allowed are less than %2 KiB"_s
                         .arg(std::max(smallPeak, largePeak))
                         .arg(mostMemory));
    }
    if (smallPeak <= 0 || largePeak * whole > smallPeak * (whole + mostGrowthPercent)) {
        wrong.append(u"the delivery's memory grows with the queue: %1 KiB and %2 KiB, allowed are "
                     "%3 percent more"_s.arg(smallPeak)
                         .arg(largePeak)
                         .arg(mostGrowthPercent));
    }
    return wrong;
}

QStringList sellingComplaints(qint64 peak)
{
    if (peak > 0 && peak < mostMemory) {
        return {};
    }
    return {
        u"the selling till took %1 KiB, allowed are less than %2 KiB"_s.arg(peak).arg(mostMemory)};
}

} // namespace month

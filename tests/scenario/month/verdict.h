// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace month {

/// A confirmation in the till's queue.
struct Queued
{
    QString check;
    QString sale; ///< the sale that it returns; empty for a sale
};

/// A request as the server saw it.
struct Arrival
{
    QByteArray endpoint; ///< "precheck", "paymenttry" or "checkconfirm"
    QString check;
    int status = 200;
};

/// What is wrong with a delivery to a server that was there all the time, a sentence each; empty
/// when every confirmation arrived exactly once, in the order of the queue, a return never before
/// its sale, and nothing was refused.
/// @param queue first in, first
/// @param arrivals in the order in which the server answered
QStringList complaints(const QList<Queued>& queue, const QList<Arrival>& arrivals);

/// The most that a draining process and a selling till may take, in KiB: an eighth of a small
/// machine.
inline constexpr qint64 mostMemory = 64 * 1024;
/// By how many percent a queue of several times the length may raise the peak. Up to about a
/// thousand messages the database's cache still fills (three percent from 250 to 2,500); from then
/// on runs differ by less than one percent. Ten percent are about 2.4 MiB: a delivery that kept
/// only a hundred bytes of each of 50,000 messages would take more.
inline constexpr qint64 mostGrowthPercent = 10;

/// What is wrong with the peaks of two deliveries, in KiB.
QStringList memoryComplaints(qint64 smallPeak, qint64 largePeak);

/// What is wrong with the peak of a till that sells while its queue grows, in KiB.
QStringList sellingComplaints(qint64 peak);

} // namespace month

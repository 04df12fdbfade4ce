// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/metrics.h"

#include "host/database/database.h"
#include "host/queue/queuefigures.h"
#include "till/desk/precheckdurations.h"

#include <QDateTime>
#include <QFileInfo>
#include <QMap>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr double microsecondsOfSecond = 1'000'000;

/// One figure after the other; a family's head stands above its first.
class Writer
{
public:
    void family(const char* name, const char* type, const char* help)
    {
        current = name;
        written += "# HELP " + current + ' ' + help + "\n# TYPE " + current + ' ' + type + '\n';
    }
    void value(double number, const QByteArray& label = {}, const char* suffix = "")
    {
        constexpr int digits = 15;
        written += current + suffix + (label.isEmpty() ? QByteArray() : '{' + label + '}') + ' ' +
                   QByteArray::number(number, 'g', digits) + '\n';
    }
    const QByteArray& text() const { return written; }

private:
    QByteArray current;
    QByteArray written;
};

QByteArray label(const char* name, const QByteArray& value)
{
    return QByteArray(name) + "=\"" + value + '"';
}

/// The classes of the table of answers that a status alone tells.
const char* reasonOfStatus(int status)
{
    constexpr int serverErrors = 500;
    switch (status) {
    case 0:
        return "no_answer";
    case 401:
    case 403:
        return "authorization";
    case 404:
        return "address";
    default:
        return status >= serverErrors ? "server_error" : "refused";
    }
}

void writeQueue(Writer& out, const poshost::QueueFigures& figures)
{
    const poshost::QueueCounts& counts = figures.counts;
    out.family("orva_till_queue_messages", "gauge", "Messages to be delivered, by how they stand");
    out.value(counts.waiting, label("state", "waiting"));
    out.value(counts.paused, label("state", "paused"));
    out.value(counts.parked, label("state", "parked"));
    out.family("orva_till_queue_oldest_seconds", "gauge", "Age of the oldest undelivered message");
    out.value(double(figures.oldestSeconds));
    out.family("orva_till_delivered_total", "counter",
               "Messages delivered, or handed over to a store, since the file was made");
    out.value(double(figures.stored - counts.waiting - counts.paused - counts.parked));
    QMap<QByteArray, int> failed{{"no_answer", 0},
                                 {"authorization", 0},
                                 {"address", 0},
                                 {"server_error", 0},
                                 {"refused", 0}};
    for (auto it = figures.failedByStatus.cbegin(); it != figures.failedByStatus.cend(); ++it) {
        failed[reasonOfStatus(it.key())] += it.value();
    }
    out.family("orva_till_queue_failed", "gauge",
               "Undelivered messages whose last attempt failed, by reason");
    for (auto it = failed.cbegin(); it != failed.cend(); ++it) {
        out.value(*it, label("reason", it.key()));
    }
}

void writePrechecks(Writer& out, const PrecheckDurations::Counts& counts)
{
    out.family("orva_till_precheck_seconds", "histogram",
               "How long the loyalty system was waited for about a check");
    quint64 upTo = 0;
    for (std::size_t i = 0; i < PrecheckDurations::ends.size(); ++i) {
        upTo += counts.inClass.at(i);
        out.value(double(upTo), label("le", QByteArray::number(PrecheckDurations::ends.at(i))),
                  "_bucket");
    }
    upTo += counts.inClass.back();
    out.value(double(upTo), label("le", "+Inf"), "_bucket");
    out.value(double(counts.microseconds) / microsecondsOfSecond, {}, "_sum");
    out.value(double(upTo), {}, "_count");
}

} // namespace

QByteArray metrics::text(poshost::Database& database)
{
    Writer out;
    writeQueue(out, poshost::QueueFigures::of(database));
    writePrechecks(out, PrecheckDurations(database.fileName()).counts());
    out.family("orva_till_database_bytes", "gauge", "Size of the till's file and its log");
    out.value(double(QFileInfo(database.fileName()).size() +
                     QFileInfo(database.fileName() + u"-wal"_s).size()));
    out.family("orva_till_written_timestamp_seconds", "gauge", "When these figures were written");
    out.value(double(QDateTime::currentSecsSinceEpoch()));
    return out.text();
}

} // namespace till

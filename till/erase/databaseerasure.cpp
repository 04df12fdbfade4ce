// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/erase/databaseerasure.h"

#include "host/core/basicexception.h"
#include "host/database/database.h"
#include "host/database/filelock.h"
#include "host/database/transaction.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/storestate.h"
#include "till/archive/checkarchive.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkstore.h"
#include "till/failure.h"
#include "till/person/personincheck.h"
#include "till/reason.h"
#include "till/sharing/silentchecks.h"
#include "till/text.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Nothing for one that is damaged.
std::optional<Check> checkOf(const StoredCheck& stored)
{
    try {
        return checkcodec::decode(stored.data, stored.id);
    } catch (const Failure&) {
        return std::nullopt;
    }
}

bool isUndelivered(const poshost::QueueEntry& entry)
{
    return entry.state != poshost::QueueState::Delivered;
}

} // namespace

QSet<qint64> DatabaseErasure::undelivered()
{
    QSet<qint64> messages;
    poshost::OutgoingQueue queue(database);
    const QList<poshost::QueueEntry> entries = queue.list();
    for (const poshost::QueueEntry& entry : entries) {
        const auto content = queue.show(entry.id);
        if (content && isUndelivered(entry) &&
            (customer.isInText(content->payload) || customer.isInText(content->lastAnswer))) {
            messages.insert(entry.id);
        }
    }
    return messages;
}

QList<qint64> DatabaseErasure::look()
{
    QSet<qint64> messages = undelivered();
    poshost::OutgoingQueue queue(database);
    store.forEachStored([&](const StoredCheck& stored) {
        const auto check = checkOf(stored);
        if (!check || !customer.isIn(*check)) {
            return;
        }
        customer.learn(*check);
        const auto message = stored.message ? queue.show(*stored.message) : std::nullopt;
        if (message && isUndelivered(message->entry)) {
            messages.insert(*stored.message);
        }
    });
    CheckArchive(database).forEach([&](const ArchivedCheck& kept) {
        const auto check = checkOf({kept.id, kept.state, {}, kept.data});
        if (check && customer.isIn(*check)) {
            customer.learn(*check);
        }
        return true;
    });
    QList<qint64> sorted(messages.cbegin(), messages.cend());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

void DatabaseErasure::erase(ErasureReport& report)
{
    {
        poshost::Transaction transaction(database);
        eraseChecks(report);
        eraseMessages(report);
        transaction.commit();
    }
    eraseArchive(report);
    eraseDeletedRows(report);
}

/// Behind the rows: what goes into the archive from now on is masked, and what went before is there
/// once nobody else works on it. Where there is no folder, nobody has begun.
void DatabaseErasure::eraseArchive(ErasureReport& report)
{
    CheckArchive archive(database);
    if (!QFileInfo(archive.folder()).isDir()) {
        return;
    }
    const poshost::FileLock lock(archive.lockFile());
    if (!lock.isHeld()) {
        report.left.append(Text::tr("Another process works on the archive of %1; erase again when "
                                    "it has ended.")
                               .arg(database.fileName()));
        return;
    }
    const PersonMask mask = customer.mask();
    report.checks += archive.rewrite([&](ArchivedCheck& kept) {
        const auto check = checkOf({kept.id, kept.state, {}, kept.data});
        if (!check || !customer.isIn(*check)) {
            return false;
        }
        kept.data = checkcodec::encode(personincheck::masked(*check, mask));
        return true;
    });
}

void DatabaseErasure::eraseChecks(ErasureReport& report)
{
    const QList<qint64> waiting = look();
    const PersonMask mask = customer.mask();
    QList<Check> masked;
    store.forEachStored([&](const StoredCheck& stored) {
        const auto check = checkOf(stored);
        if (!check) {
            if (customer.isInBytes(stored.data)) {
                report.left.append(checkcodec::damagedText(stored.id));
            }
        } else if (!customer.isIn(*check)) {
            return;
        } else if (stored.state == u"suspended"_s) {
            report.left.append(Text::tr("Check %1 is suspended; close or abandon it, then erase "
                                        "again.")
                                   .arg(stored.id));
        } else if (poshost::storestate::isConfigured() &&
                   silentchecks::isUnderWay(database, stored.id)) {
            report.left.append(Text::tr("Check %1 is on its way to the store; see that the store "
                                        "answers, then erase again.")
                                   .arg(stored.id));
        } else if (!stored.message || !waiting.contains(*stored.message)) {
            masked.append(personincheck::masked(*check, mask));
        }
    });
    for (const Check& check : std::as_const(masked)) {
        store.rewrite(check);
    }
    report.checks += int(masked.size());
}

void DatabaseErasure::eraseMessages(ErasureReport& report)
{
    const PersonMask mask = customer.mask();
    poshost::OutgoingQueue queue(database);
    report.messages = queue.changeDelivered(
        [&](const QString& text) { return customer.isInText(text) ? mask.masked(text) : text; });
    const QList<qint64> waiting = look();
    for (const qint64 message : waiting) {
        report.left.append(Text::tr("Message %1 is not delivered and needs the card, with its "
                                    "check; see to it (\"queue list\"), then erase again.")
                               .arg(message));
    }
}

/// Even where nothing was changed now: rows that were removed before may tell of the customer.
void DatabaseErasure::eraseDeletedRows(ErasureReport& report)
{
    try {
        if (!database.forgetDeleted()) {
            report.left.append(Text::tr("%1 is in use, and keeps what was there before in its free "
                                        "space; end the other tills, then erase again.")
                                   .arg(database.fileName()));
        }
    } catch (const BasicException& error) {
        report.left.append(reasonOf(error)); // the rows are done all the same
    }
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/archivedchecks.h"

#include "till/checks/checkcodec.h"
#include "till/failure.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

bool isClosed(const ArchivedCheck& kept)
{
    return kept.state == u"closed"_s;
}

/// @throws Failure when it is damaged, or its list and its content are not of one check
Check closedCheckOf(const ArchivedCheck& kept)
{
    Check check = checkcodec::decode(kept.data, kept.id);
    if (check.id() != kept.id || check.number() != kept.number ||
        check.document->getDocumentType() != kept.type ||
        check.document->getSaleDocumentId() != kept.saleId) {
        throw Failure(checkcodec::damagedText(kept.id));
    }
    return check;
}

} // namespace

QList<Check> ArchivedChecks::named(const QString& which, bool onlySales)
{
    bool isNumber = false;
    const qint64 number = which.toLongLong(&isNumber);
    const auto wanted = [&](const ArchivedCheck& kept) {
        return isClosed(kept) && (kept.id == which || (isNumber && kept.number == number)) &&
               (!onlySales || kept.type == static_cast<int>(EDocumentType::Sale));
    };
    QList<Check> found;
    for (const ArchivedCheck& kept : archive.find(wanted)) {
        found.append(closedCheckOf(kept));
    }
    return found;
}

QList<Check> ArchivedChecks::returnsOf(const QString& saleId)
{
    QList<Check> found;
    for (const ArchivedCheck& kept : archive.find([&](const ArchivedCheck& other) {
             return isClosed(other) && other.saleId == saleId;
         })) {
        found.append(closedCheckOf(kept));
    }
    return found;
}

void ArchivedChecks::forEachClosed(const std::function<void(const Check&)>& take)
{
    archive.forEach([&take](const ArchivedCheck& kept) {
        if (isClosed(kept)) {
            take(closedCheckOf(kept));
        }
        return true;
    });
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/support/supportedcase.h"

#include "host/database/database.h"
#include "host/services/dbqueuebroker.h"
#include "till/checks/checkcodec.h"
#include "till/failure.h"
#include "till/recording/recordfolder.h"
#include "till/text.h"

#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace till {
namespace {

struct HandedCheck
{
    Check check;
    QString confirmation;
};

/// Every listed check's place in the order of the last changes.
QHash<QString, int> placesIn(const SupportArchive& archive)
{
    QHash<QString, int> places;
    const QByteArray json = archive.content(supportfiles::checks);
    const QJsonArray list = QJsonDocument::fromJson(json).array();
    for (const auto& check : list) {
        places.insert(check.toObject().value("id"_L1).toString(), int(places.size()));
    }
    return places;
}

/// In the order in which they were closed, by the list of checks; those that are not in it go
/// before, sales first and the returns of one sale one after the other.
QList<HandedCheck> checksIn(const SupportArchive& archive)
{
    QList<HandedCheck> checks;
    const QList<TarMember> members = archive.in(supportfiles::checkFolder);
    for (const TarMember& member : members) {
        const QString name = u"%1/%2.xml"_s.arg(supportfiles::messageFolder,
                                                QFileInfo(member.name).completeBaseName());
        checks.append({checkcodec::decode(member.content, member.name),
                       QString::fromUtf8(archive.content(name))});
    }
    const QHash<QString, int> places = placesIn(archive);
    const auto rank = [&places](const HandedCheck& kept) {
        return std::pair(places.value(kept.check.id(), -1),
                         kept.check.isReturn() ? 1 + kept.check.returnsBefore : 0);
    };
    std::stable_sort(checks.begin(), checks.end(),
                     [&](const HandedCheck& left, const HandedCheck& right) {
                         return rank(left) < rank(right);
                     });
    return checks;
}

} // namespace

SupportedCase::SupportedCase(const SupportArchive& archive, const QString& fileName)
    : opened(QSharedPointer<poshost::Database>::create(place.filePath(u"case.sqlite"_s))),
      store(std::make_unique<CheckStore>(opened)),
      folder(std::make_unique<RecordFolder>(place.filePath(u"records"_s), RecordFolder::Bounds()))
{
    if (archive.in(supportfiles::checkFolder).isEmpty()) {
        throw Failure(
            Text::tr("%1 holds no check; have it made with --check or --records.").arg(fileName),
            ExitCode::Usage);
    }
    takeChecks(archive);
    takeRecords(archive.content(supportfiles::records));
}

SupportedCase::~SupportedCase() = default;

void SupportedCase::takeChecks(const SupportArchive& archive)
{
    DBQueueBroker broker(opened);
    const QList<HandedCheck> checks = checksIn(archive);
    for (const HandedCheck& kept : checks) {
        Check check = kept.check;
        if (check.isReturn()) { // of those before it not all may be here
            const QString sale = check.document->getSaleDocumentId();
            check.returnsBefore = int(store->returnsOf(sale).size());
        }
        store->noteOpen(check);
        store->close(check, [&] {
            if (!kept.confirmation.isEmpty()) {
                broker.addToQueue(u"case"_s, {{u"payload"_s, kept.confirmation}}, QString());
            }
        });
    }
}

void SupportedCase::takeRecords(const QByteArray& content)
{
    const QList<QByteArray> all = Record::apart(content);
    for (const QByteArray& record : all) {
        folder->take(record);
    }
}

} // namespace till

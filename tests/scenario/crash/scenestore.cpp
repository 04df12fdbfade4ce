// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What has to be true of the store when all is over.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "tests/scenario/crash/scene.h"

#include <QDeadlineTimer>

using namespace Qt::StringLiterals;

namespace {

const QString tillFile = QStringLiteral("till.sqlite");
const QString storeFile = QStringLiteral("store.sqlite");

bool hasWaiting(const QString& queueFile)
{
    poshost::Database database(queueFile);
    return poshost::Statement(database, u"SELECT 1 FROM queue_messages WHERE state = 'waiting'"_s)
        .next();
}

} // namespace

/// What an open return has reserved is its own for a minute: here that is over at once.
void Scene::giveBack(QStringList& problems)
{
    {
        poshost::Database database(path(tillFile));
        database.execute(u"UPDATE return_reservations SET noted_at = noted_at - 120000"_s);
    }
    runTill({{u"--config"_s, u"store.toml"_s, u"queue"_s, u"deliver"_s}, {}}, nullptr);
    poshost::Database store(path(storeFile));
    poshost::Statement known(store, u"SELECT 1 FROM sqlite_schema WHERE name = 'taken_back'"_s);
    if (!known.next()) {
        return; // nothing has got there
    }
    poshost::Statement left(store, u"SELECT count(*) FROM taken_back WHERE state = 'reserved'"_s);
    if (left.next() && left.value(0).toInt() > 0) {
        problems += u"returns that never close hold goods: %1"_s.arg(left.value(0).toInt());
    }
}

/// The store has every check that no message takes there.
void Scene::lookForSilent(QStringList& problems)
{
    poshost::Database till(path(tillFile));
    poshost::Database store(path(storeFile));
    poshost::Statement closed(till, u"SELECT id FROM checks WHERE state = 'closed' "
                                    "AND message_id IS NULL"_s);
    while (closed.next()) {
        const QString id = closed.value(0).toString();
        poshost::Statement kept(store, u"SELECT 1 FROM silent WHERE identifier = ?"_s);
        if (!kept.bind(id).next()) {
            problems += u"the store has not got check %1"_s.arg(id);
        }
    }
    if (poshost::Statement(till, u"SELECT 1 FROM silent_checks"_s).next()) {
        problems += u"checks are noted for the store that has them"_s;
    }
}

/// Who delivers for the store tries again, as its service would, when the server was stopped; what
/// is parked waits for people, and no trying helps.
void Scene::deliverStore(QStringList& problems)
{
    constexpr int limit = 30'000;
    const QDeadlineTimer deadline(limit);
    while (true) {
        const auto worker =
            runTill({{u"--database"_s, storeFile, u"queue"_s, u"deliver"_s}, {}}, nullptr);
        if (worker->exitCode() == 0) {
            return;
        }
        if (deadline.hasExpired() || !hasWaiting(path(storeFile))) {
            problems += u"the store is not delivered: "_s + worker->output() + worker->errors();
            return;
        }
    }
}

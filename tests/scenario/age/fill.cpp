// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// orva-age-fill DATABASE COUNT: so many more closed checks like the one that was closed last, each
// with an identifier and a number of its own, as if they had been sold yesterday.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "host/services/currenttime.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkstore.h"

#include <QUuid>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int checksOfATransaction = 5000;
constexpr qint64 aDay = 24LL * 3600 * 1000;

void insert(poshost::Database& database, till::Check& check)
{
    check.document->setDocumentId(QUuid::createUuid().toString(QUuid::WithoutBraces));
    check.document->setCheckNumber(check.number() + 1);
    poshost::Statement statement(
        database, u"INSERT INTO checks (id, number, state, type, data, updated_at, change_number) "
                  "VALUES (?, ?, 'closed', ?, ?, ?, "
                  "(SELECT coalesce(max(change_number), 0) + 1 FROM checks))"_s);
    statement.bind(check.id())
        .bind(check.number())
        .bind(check.document->getDocumentType())
        .bind(till::checkcodec::encode(check))
        .bind(CurrentTime::milliseconds() - aDay)
        .execute();
}

void fill(const QString& file, int count)
{
    const auto database = QSharedPointer<poshost::Database>::create(file);
    till::Check check = till::CheckStore(database).findClosed(u"last"_s);
    for (int done = 0; done < count;) {
        poshost::Transaction transaction(*database);
        for (const int end = std::min(count, done + checksOfATransaction); done < end; ++done) {
            insert(*database, check);
        }
        transaction.commit();
    }
    poshost::Statement next(*database,
                            u"UPDATE settings SET value = ? WHERE key = 'nextCheckNumber'"_s);
    next.bind(check.number() + 1).execute();
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fputs("orva-age-fill DATABASE COUNT\n", stderr);
        return 2;
    }
    try {
        fill(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]).toInt());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orva-age-fill: %s\n", error.what());
        return 1;
    }
    return 0;
}

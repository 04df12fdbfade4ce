// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/checkstore.h"

#include "simulator/documents/answerdocument.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/documents/xmlwriter.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

std::vector<Document> documentsOf(Statement& query)
{
    std::vector<Document> documents;
    while (query.next()) {
        documents.push_back(readXml(query.value(0).toString().toUtf8()));
    }
    return documents;
}

} // namespace

void CheckStore::rememberAnswer(const QString& checkId, const Element& answer)
{
    const QByteArray digest = xmlDigest(answer);
    {
        Statement last(db, u"SELECT digest FROM prechecks WHERE check_id=? "
                           "ORDER BY sequence DESC LIMIT 1"_s);
        if (last.bind(checkId).next() && last.value(0).toByteArray() == digest) {
            return;
        }
    }
    Statement(db, u"INSERT OR REPLACE INTO prechecks(check_id, digest, answer) VALUES(?,?,?)"_s)
        .bind(checkId)
        .bind(digest)
        .bind(QString::fromUtf8(writeXml(answer)))
        .execute();
}

std::optional<Document> CheckStore::answerFor(const QString& checkId,
                                              const Element& confirmation) const
{
    Statement query(db, u"SELECT answer FROM prechecks WHERE check_id=? "
                        "ORDER BY digest=? DESC, sequence DESC LIMIT 1"_s);
    if (!query.bind(checkId).bind(xmlDigest(withoutUsed(confirmation).root())).next()) {
        return std::nullopt;
    }
    return readXml(query.value(0).toString().toUtf8());
}

std::vector<Document> CheckStore::answersTo(const QString& checkId) const
{
    Statement query(db, u"SELECT answer FROM prechecks WHERE check_id=? ORDER BY sequence DESC"_s);
    return documentsOf(query.bind(checkId));
}

std::vector<Document> CheckStore::lastAnswers() const
{
    Statement query(db, u"SELECT answer FROM prechecks ORDER BY sequence DESC LIMIT 50"_s);
    return documentsOf(query);
}

void CheckStore::rememberTry(const QString& checkId, const Element& confirmation)
{
    Statement(db, u"INSERT OR REPLACE INTO payment_tries(check_id, digest) VALUES(?,?)"_s)
        .bind(checkId)
        .bind(xmlDigest(confirmation))
        .execute();
}

std::optional<bool> CheckStore::isSameTry(const QString& checkId, const Element& confirmation) const
{
    Statement query(db, u"SELECT digest FROM payment_tries WHERE check_id=?"_s);
    if (!query.bind(checkId).next()) {
        return std::nullopt;
    }
    return query.value(0).toByteArray() == xmlDigest(confirmation);
}

void CheckStore::forgetAnswers(const QString& checkId)
{
    Statement(db, u"DELETE FROM prechecks WHERE check_id=?"_s).bind(checkId).execute();
}

} // namespace simulator

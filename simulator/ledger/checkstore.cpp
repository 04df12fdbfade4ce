// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/checkstore.h"

#include "simulator/documents/answerdocument.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/documents/xmlwriter.h"

using namespace Qt::StringLiterals;

namespace simulator {

void CheckStore::rememberAnswer(const QString& checkId, const Element& answer)
{
    const QByteArray digest = xmlDigest(answer);
    {
        QSqlQuery last = db.run(u"SELECT digest FROM prechecks WHERE check_id=? "
                                "ORDER BY sequence DESC LIMIT 1"_s,
                                {checkId});
        if (last.next() && last.value(0).toByteArray() == digest) {
            return;
        }
    }
    db.run(u"INSERT OR REPLACE INTO prechecks(check_id, digest, answer) VALUES(?,?,?)"_s,
           {checkId, digest, QString::fromUtf8(writeXml(answer))});
}

std::optional<Element> CheckStore::answerFor(const QString& checkId,
                                             const Element& confirmation) const
{
    QSqlQuery query = db.run(u"SELECT answer FROM prechecks WHERE check_id=? "
                             "ORDER BY digest=? DESC, sequence DESC LIMIT 1"_s,
                             {checkId, xmlDigest(withoutUsed(confirmation))});
    if (!query.next()) {
        return std::nullopt;
    }
    return readXml(query.value(0).toString().toUtf8());
}

void CheckStore::rememberTry(const QString& checkId, const Element& confirmation)
{
    db.run(u"INSERT OR REPLACE INTO payment_tries(check_id, digest) VALUES(?,?)"_s,
           {checkId, xmlDigest(confirmation)});
}

std::optional<bool> CheckStore::isSameTry(const QString& checkId, const Element& confirmation) const
{
    QSqlQuery query = db.run(u"SELECT digest FROM payment_tries WHERE check_id=?"_s, {checkId});
    if (!query.next()) {
        return std::nullopt;
    }
    return query.value(0).toByteArray() == xmlDigest(confirmation);
}

void CheckStore::forgetAnswers(const QString& checkId)
{
    db.run(u"DELETE FROM prechecks WHERE check_id=?"_s, {checkId});
}

} // namespace simulator

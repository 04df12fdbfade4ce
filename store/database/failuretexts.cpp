// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/database/failuretexts.h"

#include <QStringList>
#include <libpq-fe.h>

#include <algorithm>
#include <array>

namespace orvastore::failuretexts {

using namespace Qt::StringLiterals;
using poshost::Message;

namespace {

/// What the server's codes ask of people; a code that begins so.
struct Row
{
    const char* start;
    const char* message;
};

constexpr std::array known{
    Row{"25006", "store.refusedReadOnly"},
    Row{"28", "store.refusedLogin"},
    Row{"3F000", "store.noSchema"},
    Row{"42P01", "store.noSchema"},
    Row{"42883", "store.noSchema"},
    Row{"42501", "store.forbidden"},
    Row{"53100", "store.diskFull"},
    Row{"53300", "store.tooMany"},
    Row{"55P03", "store.busy"},
    Row{"57P", "store.ending"},
};

QString firstLine(const char* words)
{
    return QString::fromUtf8(words).trimmed().section(u'\n', 0, 0).simplified();
}

} // namespace

Message ofConnecting(pg_conn* tried, const QString& server)
{
    const QString words = tried == nullptr ? QString() : firstLine(PQerrorMessage(tried));
    const bool asked = tried != nullptr && (PQconnectionUsedPassword(tried) == 1 ||
                                            PQconnectionNeedsPassword(tried) == 1);
    return asked ? Message::of("store.wrongPassword", server, words)
                 : Message::of("store.away", server, words);
}

Message lost(pg_conn* session)
{
    return Message::of("store.lost", firstLine(PQerrorMessage(session)));
}

StoreError refusal(const pg_result* result)
{
    const char* code = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    const QByteArray state = code == nullptr ? QByteArray() : QByteArray(code);
    const char* primary = PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
    const QString words = firstLine(primary == nullptr ? PQresultErrorMessage(result) : primary);
    const auto row = std::find_if(known.begin(), known.end(),
                                  [&](const Row& one) { return state.startsWith(one.start); });
    const char* message = row == known.end() ? "store.refused" : row->message;
    return StoreError(StoreError::Certainty::Refused, Message::of(message, words), state);
}

} // namespace orvastore::failuretexts

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/database/connection.h"

#include "store/database/failuretexts.h"

#include <QScopeGuard>
#include <libpq-fe.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace orvastore {

using poshost::Message;
using std::chrono::milliseconds;
using Certainty = StoreError::Certainty;

namespace {

/// What every session is told. A commit is reported once a standby has it on its disk, wherever
/// standbys are configured: a server that is set to report it earlier is overruled. And who has
/// gone is noticed within seconds even inside a command.
QByteArray manners(const Connection::Manner& manner, milliseconds limit)
{
    const QByteArray lock = QByteArray::number(std::max<qint64>(limit.count() * 3 / 4, 1));
    return "SELECT set_config('synchronous_commit', 'on', false) "
           "WHERE current_setting('synchronous_commit') IN ('off', 'local', 'remote_write');"
           // compiling these small commands costs a hundred times what running them does
           "SET jit = off;"
           "SET client_connection_check_interval = '500ms';"
           "SET tcp_keepalives_idle = 2; SET tcp_keepalives_interval = 1;"
           "SET tcp_keepalives_count = 3; SET tcp_user_timeout = '4s';"
           "SET idle_in_transaction_session_timeout = '30s';"
           "SET lock_timeout = " +
           lock +
           ";SET idle_session_timeout = " + QByteArray::number(manner.longestSilence.count()) +
           (manner.byIndexes ? ";SET enable_seqscan = off;SET enable_hashjoin = off;"
                               "SET enable_mergejoin = off;SET enable_bitmapscan = off;"
                               "SET enable_sort = off;SET enable_material = off;"
                               "SET plan_cache_mode = force_generic_plan"
                             : "") +
           ";SET search_path = orva, pg_catalog";
}

} // namespace

void Connection::Closing::operator()(pg_conn* open) const
{
    PQfinish(open);
}

Connection::Connection(const StoreSettings& given, const Manner& sessionManner)
    : settings(given), manner(sessionManner), limit(std::max(given.timeoutSeconds, 1) * 1000),
      bell(::eventfd(0, EFD_CLOEXEC))
{}

Connection::~Connection()
{
    close();
    ::close(bell);
}

void Connection::close()
{
    session.reset();
    prepared.clear();
}

void Connection::interrupt()
{
    interrupted = true;
    const quint64 one = 1;
    [[maybe_unused]] const auto written = ::write(bell, &one, sizeof one);
}

/// @return false: the time is over, or somebody has interrupted
bool Connection::wait(int descriptor, short events, const QDeadlineTimer& deadline) const
{
    pollfd watched[] = {{descriptor, events, 0}, {bell, POLLIN, 0}};
    const int ready = ::poll(watched, 2, static_cast<int>(deadline.remainingTime()));
    return ready > 0 && !interrupted && watched[0].revents != 0;
}

/// When a command that begins now has to have ended.
QDeadlineTimer Connection::inTime() const
{
    return std::min(QDeadlineTimer(limit), end);
}

void Connection::open()
{
    if (session) {
        return;
    }
    if (servers.inOrder().isEmpty()) {
        servers = Servers::of(settings);
    } else if (isDoubtful) {
        servers.putLast(0);
    }
    isDoubtful = false;
    const QDeadlineTimer deadline = inTime();
    Message reason;
    for (qsizetype left = servers.inOrder().size(); left > 0 && !interrupted; --left) {
        try {
            // one that says nothing leaves time for those behind it
            openFirst(milliseconds(deadline.remainingTime() / left));
            return;
        } catch (const StoreError& error) {
            close();
            servers.putLast(0);
            isDoubtful = false;
            if (reason.isEmpty() || error.state() != failuretexts::readOnly) {
                reason = error.message();
            }
        }
    }
    throw StoreError(Certainty::NothingSent, reason);
}

void Connection::openFirst(milliseconds time)
{
    const milliseconds usual = std::exchange(limit, time);
    const auto restore = qScopeGuard([&] { limit = usual; });
    const Server& server = servers.inOrder().first();
    session = connectTo(server, QDeadlineTimer(time));
    runAll(manners(manner, usual));
    requireNewestTimeline(server);
    ++sessions;
}

Connection::Session Connection::connectTo(const Server& server, const QDeadlineTimer& deadline)
{
    std::vector<const char*> keys;
    std::vector<const char*> values;
    for (auto it = server.options.cbegin(); it != server.options.cend(); ++it) {
        keys.push_back(it.key().constData());
        values.push_back(it->constData());
    }
    keys.push_back(nullptr);
    values.push_back(nullptr);
    Session tried(PQconnectStartParams(keys.data(), values.data(), 0));
    PostgresPollingStatusType state = PGRES_POLLING_WRITING;
    while (tried && PQstatus(tried.get()) != CONNECTION_BAD && state != PGRES_POLLING_OK &&
           state != PGRES_POLLING_FAILED) {
        if (!wait(PQsocket(tried.get()), state == PGRES_POLLING_READING ? POLLIN : POLLOUT,
                  deadline)) {
            throw StoreError(Certainty::NothingSent, Message::of("store.silent", server.name));
        }
        state = PQconnectPoll(tried.get());
    }
    if (!tried || PQstatus(tried.get()) != CONNECTION_OK) {
        throw StoreError(Certainty::NothingSent,
                         failuretexts::ofConnecting(tried.get(), server.name));
    }
    requirePrimary(tried, server);
    PQsetnonblocking(tried.get(), 1);
    PQsetNoticeReceiver(tried.get(), &Connection::notice, this);
    return tried;
}

void Connection::requirePrimary(const Session& tried, const Server& server) const
{
    for (const char* name : {"in_hot_standby", "default_transaction_read_only"}) {
        const char* value = PQparameterStatus(tried.get(), name);
        if (value != nullptr && QByteArray(value) == "on") {
            throw StoreError(Certainty::NothingSent, Message::of("store.readOnly", server.name),
                             failuretexts::readOnly);
        }
    }
}

/// A standby that was promoted counts its timeline up: a server with an older one than was seen
/// before has been replaced.
void Connection::requireNewestTimeline(const Server& server)
{
    const QByteArray sql = "SELECT ('x' || substr(pg_walfile_name(pg_current_wal_lsn()), 1, 8))"
                           "::bit(32)::int";
    const auto timeline = static_cast<int>(run(sql).number(0, 0));
    if (timeline < newestTimeline) {
        throw StoreError(Certainty::NothingSent, Message::of("store.replaced", server.name));
    }
    newestTimeline = timeline;
}

/// The session is gone, and with it all that the server held for it.
void Connection::lose(const Message& reason)
{
    close();
    isDoubtful = true;
    throw StoreError(Certainty::Unknown, reason);
}

void Connection::notice(void* connection, const pg_result* result)
{
    const char* severity = PQresultErrorField(result, PG_DIAG_SEVERITY_NONLOCALIZED);
    if (severity != nullptr && QByteArray(severity) == "WARNING") {
        static_cast<Connection*>(connection)->warned = true;
    }
}

void Connection::flush(const QDeadlineTimer& deadline)
{
    int left = PQflush(session.get());
    while (left == 1 && wait(PQsocket(session.get()), POLLIN | POLLOUT, deadline)) {
        PQconsumeInput(session.get());
        left = PQflush(session.get());
    }
    if (left != 0) {
        lose(failuretexts::lost(session.get()));
    }
}

Result Connection::finish(const QDeadlineTimer& deadline)
{
    flush(deadline);
    Result last(nullptr);
    while (true) {
        while (PQisBusy(session.get()) == 1) {
            if (!wait(PQsocket(session.get()), POLLIN, deadline)) {
                lose(Message::of("store.silent", servers.inOrder().first().name));
            }
            if (PQconsumeInput(session.get()) == 0) {
                lose(failuretexts::lost(session.get()));
            }
        }
        pg_result* const next = PQgetResult(session.get());
        if (next == nullptr) {
            return last;
        }
        if (last.raw() == nullptr || PQresultStatus(last.raw()) != PGRES_FATAL_ERROR) {
            last = Result(next);
        } else {
            PQclear(next);
        }
    }
}

void Connection::prepare(const QByteArray& sql, qsizetype values)
{
    if (prepared.contains(sql)) {
        return;
    }
    const QByteArray name = "s" + QByteArray::number(prepared.size());
    if (PQsendPrepare(session.get(), name.constData(), sql.constData(), static_cast<int>(values),
                      nullptr) == 0) {
        lose(failuretexts::lost(session.get()));
    }
    const Result result = finish(inTime());
    if (PQresultStatus(result.raw()) != PGRES_COMMAND_OK) {
        throw failuretexts::refusal(result.raw());
    }
    prepared.insert(sql, name);
}

/// Until a command is sent nothing can have happened.
void Connection::prepareFirst(const QByteArray& sql, qsizetype values)
{
    try {
        prepare(sql, values);
    } catch (const StoreError& error) {
        if (error.certainty() == Certainty::Unknown) {
            throw StoreError(Certainty::NothingSent, error.message(), error.state());
        }
        throw;
    }
}

void Connection::send(const QByteArray& sql, const QList<Value>& values)
{
    std::vector<const char*> texts;
    std::vector<int> lengths;
    std::vector<int> formats;
    for (const Value& value : values) {
        texts.push_back(value.isNull ? nullptr : value.bytes.constData());
        lengths.push_back(static_cast<int>(value.bytes.size()));
        formats.push_back(value.isBinary ? 1 : 0);
    }
    if (PQsendQueryPrepared(session.get(), prepared.value(sql).constData(),
                            static_cast<int>(values.size()), texts.data(), lengths.data(),
                            formats.data(), 0) == 0) {
        lose(failuretexts::lost(session.get()));
    }
}

void Connection::requireGood(const Result& result)
{
    const ExecStatusType status = PQresultStatus(result.raw());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
        const StoreError error = failuretexts::refusal(result.raw());
        if (PQstatus(session.get()) == CONNECTION_BAD) {
            lose(error.message()); // the server is ending: whether before or after it is not said
        }
        throw error;
    }
    if (warned) {
        lose(Message::of("store.unsure"));
    }
}

Result Connection::run(const QByteArray& sql, const QList<Value>& values)
{
    open();
    prepareFirst(sql, values.size());
    warned = false;
    send(sql, values);
    Result result = finish(inTime());
    requireGood(result);
    return result;
}

Result Connection::runBefore(const QByteArray& next, const QList<Value>& itsValues,
                             const QByteArray& sql, const QList<Value>& values)
{
    open();
    prepareFirst(sql, values.size());
    prepareFirst(next, itsValues.size());
    warned = false;
    PQenterPipelineMode(session.get());
    send(sql, values);
    bool isSent = PQpipelineSync(session.get()) == 1; // which ends its transaction
    send(next, itsValues);
    isSent = isSent && PQpipelineSync(session.get()) == 1;
    if (!isSent) {
        lose(failuretexts::lost(session.get()));
    }
    const QDeadlineTimer deadline = inTime();
    Result result = finish(deadline);
    const Result ofNext = finish(deadline);
    finish(deadline); // the mark behind it
    if (PQexitPipelineMode(session.get()) == 0) {
        lose(failuretexts::lost(session.get()));
    }
    requireGood(result);
    requireGood(ofNext);
    return result;
}

void Connection::runAll(const QByteArray& sql)
{
    open();
    warned = false;
    if (PQsendQuery(session.get(), sql.constData()) == 0) {
        lose(failuretexts::lost(session.get()));
    }
    const Result result = finish(inTime());
    const ExecStatusType status = PQresultStatus(result.raw());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
        throw failuretexts::refusal(result.raw());
    }
    if (warned) {
        lose(Message::of("store.unsure"));
    }
}

} // namespace orvastore

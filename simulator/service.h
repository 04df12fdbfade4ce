// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"
#include "simulator/ledger/habits.h"
#include "simulator/ledger/ledgerprinter.h"
#include "simulator/ledger/workerthread.h"
#include "simulator/rules/rules.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace simulator {

class CheckDesk;
class Database;
class Element;
class Explainer;
struct Check;

/// Answers requests: looks at address, method and credentials, reads the check and takes it to the
/// desk. Knows nothing of sockets. The database is used in a thread of the service's own, one
/// request at a time; reading and writing XML is done in the caller's.
class Service
{
public:
    /// Opens the database, making it where it is missing; throws DatabaseError.
    /// deskHabits: for a service that is to book wrongly
    Service(const Rules& serviceRules, const QString& databasePath, Habits deskHabits = {});
    ~Service();
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    /// Answers one request; never throws. May be called from several threads at once. Blocks until
    /// what it answers is durable.
    Answer handle(const Request& request);

    /// Whether the request is for an address that there is and has the right credentials, so that
    /// its body is worth reading. May be called from several threads at once.
    [[nodiscard]] bool admits(const Request& request) const;

    /// Follows other rules from the next request on; finished answers count anew. The database
    /// stays the one it is.
    void setRules(const Rules& newRules);

    /// The books at this moment. Throws DatabaseError.
    LedgerView ledger();

    /// The rules that are followed at this moment. May be called from several threads at once.
    [[nodiscard]] std::shared_ptr<const Rules> rules() const;

    /// The Authorization header that is accepted at this moment. May be called from several
    /// threads at once.
    [[nodiscard]] QByteArray authorization() const;

private:
    struct Following;

    static std::optional<Answer> objection(const Request& request, const Following& now);
    Answer handleCheck(const Request& request, Following& now, Answer& about);
    Answer handleKnown(const QString& endpoint, const Element& document);
    Answer handleStrictly(const QString& endpoint, const Element& document);
    [[nodiscard]] std::shared_ptr<Following> current() const;

    mutable std::mutex mutex; // guards what follows next
    std::shared_ptr<Following> following;
    const Habits habits;
    WorkerThread worker;
    std::unique_ptr<Database> database;   // made, used and destroyed in the worker's thread
    std::unique_ptr<CheckDesk> desk;      // the same
    std::unique_ptr<Explainer> explainer; // the same
};

} // namespace simulator

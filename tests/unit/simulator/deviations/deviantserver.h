// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/deviations/deviatingserver.h"
#include "simulator/service.h"
#include "tests/unit/simulator/testchecks.h"

#include <QTemporaryDir>

#include <functional>

namespace simulator::test {

/// A server with the built-in rules and books of its own, sound or with a deviation.
class DeviantServer
{
public:
    /// deviation: empty for a sound one
    explicit DeviantServer(const QString& deviation);

    Answer ask(const Request& request) { return server.handle(request); }
    Answer ask(const char* endpoint, const QByteArray& body) { return ask(post(endpoint, body)); }
    Answer precheck(const TextCheck& check) { return ask("precheck", document(check)); }

    /// Pre-checks a sale of two lines of card 2200000000017 and returns its confirmation, which
    /// pays 54.00 of 149.00 with points: 5.00 and 6.00 discount, 47.00 and 7.00 points.
    QByteArray confirmationFor(const QString& id);

    /// Takes that sale through all steps. @return the answer to the confirmation
    Answer sell(const QString& id);

    /// Sends a document to the payment try and to the confirmation. @return the two statuses
    QString confirm(const QByteArray& confirmation);

    /// Returns pieces of the first line of the sale "sale", of which there are three.
    TextCheck partOfFirst(const QString& id, const QString& total, const QString& points) const;

    /// Sends a return to all addresses. @return their statuses
    QString giveBack(const TextCheck& check);

    /// What the books have: the balance of the card of these sales.
    QString balance();

    /// How many checks are booked.
    QString bookings() { return QString::number(service.ledger().checks.size()); }

private:
    QTemporaryDir folder;
    Service service;
    DeviatingServer server;
};

/// Plays something and says in a few words what a till sees, or what the books have.
using Scene = std::function<QString(DeviantServer&)>;

/// A deviation, seen beside the sound server.
struct DeviationRow
{
    const char* deviation;
    Scene scene;
    QString sound;
    QString deviating;
};

// The rows by subject, as the deviations are.
std::vector<DeviationRow> documentRows();
std::vector<DeviationRow> clientRows();
std::vector<DeviationRow> exchangeRows();
std::vector<DeviationRow> refusalRows();
std::vector<DeviationRow> orderRows();
std::vector<DeviationRow> bookingRows();

/// The texts in the order in which they come about, with blanks between.
inline QString inOrder(const QStringList& texts)
{
    return texts.join(QLatin1Char(' '));
}

/// A status as scenes write it.
inline QString said(const Answer& answer)
{
    return QString::number(answer.status);
}

} // namespace simulator::test

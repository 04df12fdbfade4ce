// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"
#include "simulator/exchange.h"
#include "simulator/ledger/habits.h"

#include <QStringList>

#include <functional>
#include <span>
#include <variant>

namespace simulator {

class Notes;

/// What answers a request.
using Handler = std::function<Answer(const Request&)>;

/// Changes what a pre-check is answered before it is written.
using DocumentDeviation = void (*)(Element root);

/// Changes an answer that is ready to be sent.
using AnswerDeviation = void (*)(const Request&, Answer&);

/// Stands in front of the sound server and answers in its place. notes: what it remembers from one
/// request to the next.
using ServerDeviation = Answer (*)(const Request&, const Handler& sound, Notes& notes);

/// Marks a deviation that was planted by somebody who knows what a server must do, and not what
/// looks for it.
inline constexpr bool blind = true;

/// One way in which real servers do not do what tills rely on.
struct Deviation
{
    const char* name;   ///< small letters with hyphens
    const char* breaks; ///< the requirement of docs/protocol.md, by its name
    const char* what;   ///< half a sentence for people: what the server does
    /// A habit of booking works in the ledger; the others in DeviatingServer.
    std::variant<DocumentDeviation, AnswerDeviation, ServerDeviation, SaleHabit, ReturnHabit> how;
    bool isBlind = false;
};

/// All deviations, in the order of their subjects.
const std::vector<Deviation>& deviations();

/// The deviation of that name, or null.
const Deviation* deviation(const QString& name);

/// The habits of booking among the deviations of these names; unknown names are passed over.
Habits habitsOf(const QStringList& names);

// The deviations by subject; each list stands in a file of its own.
std::span<const Deviation> numberDeviations();
std::span<const Deviation> lineDeviations();
std::span<const Deviation> clientDeviations();
std::span<const Deviation> bodyDeviations();
std::span<const Deviation> headerDeviations();
std::span<const Deviation> statusDeviations();
std::span<const Deviation> orderDeviations();
std::span<const Deviation> bookingDeviations();

} // namespace simulator

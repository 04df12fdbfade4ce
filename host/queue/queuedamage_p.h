// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"

#include <QString>
#include <QVariant>
#include <optional>

namespace poshost {

class Database;

/// Messages whose rows are damaged: they are parked with a sentence and hold up no other.
namespace queuedamage {

/// What the delivery reads of a message, as it stands in the file.
struct StoredMessage
{
    QVariant payload; ///< null: there is no content
    QString headers;
    QString urls;
    QVariant digest; ///< null: written by a version that stored none
    QVariant steps;
    QVariant stepsDone;
    QVariant lastStatus;
    /// How many addresses there are, where a sound message with the same headers and addresses was
    /// read before; else they are read now.
    std::optional<qsizetype> knownAddresses = std::nullopt;
};

/// What is wrong with a message, and what to do about it, in one sentence; empty when it can be
/// sent.
Message of(const StoredMessage& message);

/// A number from 0 up as it stands in the file; 0 for anything else.
int countIn(const QVariant& value);

/// Parks the messages that a delivery would pass over for ever: those whose state is none, and
/// those without the row for who they are sent as, which they are given anew and empty.
/// @return how many
/// @throws BasicException "databaseError"; then nothing has changed
int parkOverlooked(Database& database);

} // namespace queuedamage

} // namespace poshost

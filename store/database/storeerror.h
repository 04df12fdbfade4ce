// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"

#include <stdexcept>

namespace orvastore {

/// Something at the store did not succeed, and what that means for what was asked.
class StoreError : public std::runtime_error
{
public:
    /// What is certain about the command that failed.
    enum class Certainty : char
    {
        NothingSent, ///< it never left this machine, or no server was reached
        Unknown,     ///< it may have been done: nobody has said
        Refused,     ///< the server has said no and undone it
    };

    StoreError(Certainty what, const poshost::Message& reason, const QByteArray& state = {})
        : std::runtime_error(reason.in(poshost::Language::English).toStdString()), certain(what),
          said(reason), sqlState(state)
    {}

    Certainty certainty() const { return certain; }
    poshost::Message message() const { return said; }
    /// The server's code for it, five letters; empty when no server has spoken.
    QByteArray state() const { return sqlState; }

    /// A refusal since it contradicts what another till has done.
    static StoreError conflict(const poshost::Message& reason)
    {
        StoreError error(Certainty::Refused, reason);
        error.isOfAnother = true;
        return error;
    }
    bool isConflict() const { return isOfAnother; }

private:
    Certainty certain;
    poshost::Message said;
    QByteArray sqlState;
    bool isOfAnother = false;
};

} // namespace orvastore

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/client/reaching.h"

namespace orvastore {

namespace {

/// Whether the server has said no to whatever is asked just now: it is full, busy or read-only, or
/// the store's tables are being put back.
bool isPassing(const QByteArray& state)
{
    const bool hasNoTables = state == "3F000" || state == "42P01" || state == "42883";
    return hasNoTables || state.startsWith("53") || state.startsWith("40") || state == "55P03" ||
           state == "25006";
}

} // namespace

/// A check that only has to wait must not be passed by the next one of its lane: no refusal then.
StoreEnd endOf(const StoreError& error)
{
    if (error.state().startsWith("57P")) {
        return StoreEnd::Unknown; // the session was ended, and that may come behind a commit
    }
    if (isPassing(error.state())) {
        return StoreEnd::Unreachable;
    }
    switch (error.certainty()) {
    case StoreError::Certainty::NothingSent:
        return StoreEnd::Unreachable;
    case StoreError::Certainty::Refused:
        return StoreEnd::Refused;
    case StoreError::Certainty::Unknown:
        break;
    }
    return StoreEnd::Unknown;
}

} // namespace orvastore

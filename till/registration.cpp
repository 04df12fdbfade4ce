// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Tells the host library what the till owns: its tables and its configuration keys. Every program
// that links the till's core gets this file as an object of its own (till/CMakeLists.txt), so that
// none can open a till's file without its tables.

#include "host/config/knownkeys.h"
#include "host/queue/storeerrands.h"
#include "till/checks/checkschema.h"
#include "till/checks/closedchecks.h"
#include "till/keys.h"
#include "till/sharing/reservations.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

bool registerAll()
{
    poshost::registerSchema(u"checks"_s, checkSchema());
    poshost::registerClosedChecks(readClosedCheck);
    poshost::registerStoreErrands({&Reservations::nextDue, &Reservations::releaseDue});
    poshost::knownkeys::registerKeys(u"till"_s, tillKeys());
    return true;
}

[[maybe_unused]] const bool isRegistered = registerAll();

} // namespace
} // namespace till

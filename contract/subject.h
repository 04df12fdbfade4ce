// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/hostundertest.h"

namespace contract {

/// The host that the running suite looks at.
HostUnderTest& subject();

// The tests register themselves where the linker takes them out of the archive: each of these pulls
// in one file's.
void addTextPromises();
void addDocumentPromises();
void addPluginDataPromises();
void addLinePromises();
void addCardPromises();
void addImpactPromises();
void addBonusRecordPromises();
void addConfigPromises();
void addSessionPromises();
void addQueuePromises();
void addRestClientPromises();
void addRestFailurePromises();
void addTimePromises();
void addXmlPromises();
void addLoyaltyPromises();
void addFactoryPromises();
void addSlotPromises();

} // namespace contract

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/run.h"

#include "contract/runningcase.h"
#include "contract/subject.h"

#include <gtest/gtest.h>

namespace contract {
namespace {

HostUnderTest* current = nullptr;

void addPromises()
{
    for (const auto add :
         {addTextPromises, addDocumentPromises, addPluginDataPromises, addLinePromises,
          addCardPromises, addImpactPromises, addBonusRecordPromises, addConfigPromises,
          addSessionPromises, addQueuePromises, addRestClientPromises, addRestFailurePromises,
          addTimePromises, addXmlPromises, addLoyaltyPromises, addFactoryPromises,
          addSlotPromises}) {
        add();
    }
}

} // namespace

HostUnderTest& subject()
{
    return *current;
}

int run(int& argc, char** argv, HostUnderTest& host)
{
    current = &host;
    addPromises();
    ::testing::InitGoogleTest(&argc, argv);
    nameTheCaseThatDies();
    return RUN_ALL_TESTS();
}

} // namespace contract

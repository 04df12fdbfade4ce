// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/erase/sharederasure.h"

#include "till/checks/checkcodec.h"
#include "till/failure.h"
#include "till/person/personincheck.h"
#include "till/sharing/sharedreading.h"
#include "till/text.h"

namespace till {

using orvastore::KeptCheck;
using orvastore::LeftCheck;

void SharedErasure::look()
{
    try {
        const SharedReading reading(store);
        reading.forEachCheck({}, [&](const KeptCheck& kept) {
            try {
                const Check check = SharedReading::checkOf(kept);
                if (customer.isIn(check)) {
                    customer.learn(check);
                    about.append(kept.identifier);
                }
            } catch (const Failure& failure) {
                if (customer.isInBytes(kept.content)) {
                    left.append(failure.text());
                }
            }
            return true;
        });
        reading.forEachLeft([&](const LeftCheck& kept) {
            if (customer.isInBytes(kept.content)) {
                left.append(Text::tr("Check %1 is suspended in the store; take it up and close or "
                                     "abandon it, then erase again.")
                                .arg(kept.identifier));
            }
        });
    } catch (const Failure& failure) {
        trouble = failure.text();
    }
}

void SharedErasure::erase(ErasureReport& report)
{
    report.left += left;
    for (const QString& identifier : std::as_const(about)) {
        try {
            eraseCheck(identifier, report);
        } catch (const Failure& failure) {
            report.left.append(failure.text());
        }
    }
    if (!trouble.isEmpty()) {
        report.left.append(
            Text::tr("The store was not looked through (%1); erase again.").arg(trouble));
    }
}

/// Read anew: only identifiers are kept meanwhile, however many checks there are.
void SharedErasure::eraseCheck(const QString& identifier, ErasureReport& report)
{
    const SharedReading reading(store);
    const auto kept = reading.find(identifier);
    if (!kept) {
        return;
    }
    if (!kept->isDelivered) {
        report.left.append(Text::tr("Check %1 of till %2 is not delivered by the store yet; erase "
                                    "again when it is.")
                               .arg(identifier, kept->till));
        return;
    }
    reading.rewrite(personincheck::masked(SharedReading::checkOf(*kept), customer.mask()));
    ++report.storedChecks;
}

} // namespace till

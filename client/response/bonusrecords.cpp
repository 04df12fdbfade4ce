// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The points that the lines earn.

#include "client/elements.h"
#include "client/interface.h"
#include "client/required.h"
#include "client/response/line.h"
#include "client/service.h"
#include "client/zerothreshold.h"
#include "host/services/currenttime.h"
#include "host/services/session.h"
#include "host/xml/xmlwrapper.h"

#include <cmath>

namespace orva {

namespace {

/// The host's code of the points that this system grants.
constexpr int bonusValutCode = 1200;

DocumentBonusRecord makeRecord(const DocumentCardRecord& cardRecord, int position, double bonus)
{
    DocumentBonusRecord record;
    record.bonusAmount = bonus;
    record.cardNumber = requireCard(cardRecord)->getNumber();
    record.dateTime = MockFactory<CurrentTime>::create()->currentDateTime();
    record.sessionContext = service<Session>()->getSessionContext()->getContextValue().toString();
    record.valutCode = bonusValutCode;
    record.position = QVariant(position);
    record.accrual = true;
    return record;
}

} // namespace

QList<DocumentBonusRecord>
Interface::getBonusRecords(const QSharedPointer<DocumentCardRecord>& cardRecord,
                           const QDomElement& root) const
{
    static const QList<QString> bonusPath = awardPath(element::awardBonus());
    QList<DocumentBonusRecord> records;
    const QList<QDomElement> lines = answerLines(xmlWrapper, root);
    for (const QDomElement& line : lines) {
        const int position = linePosition(xmlWrapper, line);
        const double bonus = lineAmount(xmlWrapper, line, bonusPath);
        // By its size, unlike a discount: a negative accrual makes a record as well.
        if (std::abs(bonus) < zeroThreshold) {
            continue;
        }
        records.append(makeRecord(requireCardRecord(cardRecord), position, bonus));
    }
    return records;
}

} // namespace orva

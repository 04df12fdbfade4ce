// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/documentbonusrecord.h"

bool DocumentBonusRecord::operator==(const DocumentBonusRecord& other) const
{
    return cardNumber == other.cardNumber && position == other.position &&
           bonusAmount == other.bonusAmount && valutCode == other.valutCode &&
           dateTime == other.dateTime && sessionContext == other.sessionContext &&
           accrual == other.accrual;
}

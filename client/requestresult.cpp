// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/requestresult.h"

namespace orva {

bool RequestResult::operator==(const RequestResult& other) const
{
    return discountImpacts == other.discountImpacts && bonusRecords == other.bonusRecords &&
           posMessages == other.posMessages && checkMessages == other.checkMessages;
}

} // namespace orva

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/documentcardrecord.h"

DocumentCardRecord::DocumentCardRecord(const QSharedPointer<Card>& documentCard, int systemType,
                                       int code)
    : card(documentCard), loyaltySystemType(systemType), codeInternal(code)
{}

QVariant DocumentCardRecord::getNumber() const
{
    return card.isNull() ? QVariant() : QVariant(card->getNumber());
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"

#include <QSharedPointer>
#include <QString>

namespace orva {

// What a step of the client cannot do without and a host may come without. Each step asks at the
// very place where it needs the object, so that a step which is replaced decides for itself.

/// @throws Exception "orvaRequestFormingError" @param detail what is wrong, for the log
[[noreturn]] void throwNotFormed(const QString& detail);

/// The document itself. @throws Exception "orvaRequestFormingError" when there is none
AbstractDocument& requireDocument(const QSharedPointer<AbstractDocument>& document);
/// The card record itself. @throws Exception "orvaRequestFormingError" when there is none
DocumentCardRecord& requireCardRecord(const QSharedPointer<DocumentCardRecord>& cardRecord);
/// The record's card. @throws Exception "orvaRequestFormingError" when there is none
QSharedPointer<Card> requireCard(const DocumentCardRecord& cardRecord);

} // namespace orva

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/required.h"

#include "client/exception.h"

using namespace Qt::StringLiterals;

namespace orva {

void throwNotFormed(const QString& detail)
{
    throw Exception(tr::Tr(u"orvaRequestFormingError"_s, u"Ошибка формирования запроса"_s), detail);
}

AbstractDocument& requireDocument(const QSharedPointer<AbstractDocument>& document)
{
    if (document.isNull()) {
        throwNotFormed(u"Запрос нельзя сформировать: нет документа"_s);
    }
    return *document;
}

DocumentCardRecord& requireCardRecord(const QSharedPointer<DocumentCardRecord>& cardRecord)
{
    if (cardRecord.isNull()) {
        throwNotFormed(u"Запрос нельзя сформировать: в документе нет записи карты"_s);
    }
    return *cardRecord;
}

QSharedPointer<Card> requireCard(const DocumentCardRecord& cardRecord)
{
    QSharedPointer<Card> card = cardRecord.getCard();
    if (card.isNull()) {
        throwNotFormed(u"Запрос нельзя сформировать: в записи карты нет карты"_s);
    }
    return card;
}

} // namespace orva

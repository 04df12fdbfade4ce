// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/person/personincheck.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "host/queue/xmltext.h"
#include "till/checks/check.h"
#include "till/checks/documentfields.h"
#include "till/person/cardspelling.h"
#include "till/person/personmask.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace till {
namespace {

using Cards = QList<QSharedPointer<DocumentCardRecord>>;

template <typename Owner>
void copyFields(const Owner& from, Owner& to, const QList<Field<Owner>>& fields)
{
    for (const auto& field : fields) {
        std::visit([&](const auto& access) { access.set(to, access.get(from)); }, field.access);
    }
}

QSharedPointer<DocumentCardRecord> maskedRecord(const DocumentCardRecord& record,
                                                const PersonMask& mask)
{
    const auto former = record.getCard();
    QSharedPointer<Card> card;
    if (!former.isNull()) {
        card = QSharedPointer<Card>::create(mask.maskedNumber(former->getNumber()));
        if (const auto owner = former->getClient(); !owner.isNull()) {
            const auto client = QSharedPointer<Client>::create();
            client->setName(mask.masked(owner->getName()));
            card->setClient(client);
        }
    }
    auto result = QSharedPointer<DocumentCardRecord>::create(card, record.getLoyaltySystemType(),
                                                             record.getCodeInternal());
    copyFields(record, *result, documentfields::ofCardRecord());
    return result;
}

QSharedPointer<DocumentImpact> maskedImpact(const DocumentImpact& impact, const Cards& former,
                                            const Cards& records, const PersonMask& mask)
{
    const auto totals = impact.getTotals();
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    copyFields(*totals, *detail, documentfields::ofImpactDetail());
    detail->setDiscountName(mask.masked(detail->getDiscountName()));
    detail->setCardRecord(records.value(former.indexOf(totals->getCardRecord())));
    QSharedPointer<DocumentImpact> result;
    if (dynamic_cast<const BonusImpact*>(&impact) != nullptr) {
        result = QSharedPointer<BonusImpact>::create(detail);
    } else {
        result = QSharedPointer<DiscountImpact>::create(detail);
    }
    const QMap<int, double> sums = impact.getPositionSums();
    for (auto it = sums.cbegin(); it != sums.cend(); ++it) {
        result->addDetailForPosition(it.key(), it.value());
    }
    return result;
}

QSharedPointer<::Document> maskedDocument(const ::Document& document, const PersonMask& mask)
{
    auto result = QSharedPointer<::Document>::create();
    copyFields(document, *result, documentfields::ofDocument());
    QMap<QString, QVariantMap> data = document.getPluginData();
    for (QVariantMap& values : data) {
        values = mask.masked(QVariant(values)).toMap();
    }
    result->setPluginData(data);
    const Cards former = document.getCardRecords();
    Cards records;
    for (const auto& record : former) {
        records.append(maskedRecord(*record, mask));
        result->addCardRecord(records.last());
    }
    const auto impacts = document.getImpacts();
    for (const auto& impact : impacts) {
        result->addImpact(maskedImpact(*impact, former, records, mask));
    }
    return result;
}

QStringList maskedAll(QStringList texts, const PersonMask& mask)
{
    for (QString& text : texts) {
        text = mask.masked(text);
    }
    return texts;
}

/// All texts in a value.
void gather(const QVariant& value, QStringList& texts)
{
    if (value.typeId() == QMetaType::QVariantMap) {
        const QVariantMap map = value.toMap();
        for (const QVariant& entry : map) {
            gather(entry, texts);
        }
    } else if (value.typeId() == QMetaType::QVariantList) {
        const QVariantList list = value.toList();
        for (const QVariant& entry : list) {
            gather(entry, texts);
        }
    } else if (value.typeId() == QMetaType::QString) {
        texts.append(value.toString());
    }
}

} // namespace

QSet<QString> namesInMarkup(const QString& text)
{
    static const QRegularExpression personal(
        u"<(?:\\w+:)?((?:first|last|middle|full|sur|client)?name|patronymic|e?mail|phone\\w*|"
        "address|birth\\w*)\\b[^>]*>([^<]*)<"_s,
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression client(u"<client\\b[^>]*>.*?(?:</client>|$)"_s,
                                           QRegularExpression::DotMatchesEverythingOption);
    QSet<QString> names;
    for (auto part = client.globalMatch(text); part.hasNext();) {
        const QString content = part.next().captured();
        for (auto it = personal.globalMatch(content); it.hasNext();) {
            const QString value =
                poshost::xmltext::withoutReferences(it.next().captured(2)).simplified();
            if (!value.isEmpty()) {
                names.insert(value);
            }
        }
    }
    return names;
}

People personincheck::of(const Check& check)
{
    People people;
    const Cards records = check.document->getCardRecords();
    for (const auto& record : records) {
        if (const auto card = record->getCard(); !card.isNull()) {
            people.cards.insert(cardspelling::plain(card->getNumber()));
            if (const auto owner = card->getClient(); !owner.isNull()) {
                people.names.insert(owner->getName());
            }
        }
    }
    QStringList texts;
    const QMap<QString, QVariantMap> data = check.document->getPluginData();
    for (const QVariantMap& values : data) {
        gather(values, texts);
    }
    for (const QString& text : std::as_const(texts)) {
        people.names.unite(namesInMarkup(text));
    }
    people.cards.remove(QString());
    people.names.remove(QString());
    return people;
}

Check personincheck::masked(const Check& check, const PersonMask& mask)
{
    Check result = check;
    result.document = maskedDocument(*check.document, mask);
    result.refusal = mask.masked(check.refusal);
    result.cashierMessages = maskedAll(check.cashierMessages, mask);
    result.clientMessages = maskedAll(check.clientMessages, mask);
    result.fillDocument();
    return result;
}

} // namespace till

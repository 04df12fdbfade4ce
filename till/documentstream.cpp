// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/documentstream.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "host/document/money.h"

namespace till {
namespace {

using CardRecords = QList<QSharedPointer<DocumentCardRecord>>;

enum class ImpactKind : qint32
{
    Discount = 0,
    Bonus = 1,
};

void writeCardRecord(QDataStream& stream, const DocumentCardRecord& record)
{
    const auto client = record.getCard()->getClient();
    stream << record.getCard()->getNumber() << !client.isNull()
           << (client.isNull() ? QString() : client->getName())
           << qint32(record.getLoyaltySystemType()) << qint32(record.getCodeInternal())
           << record.getPointsForSpend() << record.getPointsForEarn() << record.getBonusBalance();
}

QSharedPointer<DocumentCardRecord> readCardRecord(QDataStream& stream)
{
    QString number;
    bool hasClient = false;
    QString clientName;
    qint32 systemType = 0;
    qint32 codeInternal = 0;
    double pointsForSpend = 0;
    QVariant pointsForEarn;
    QVariant balance;
    stream >> number >> hasClient >> clientName >> systemType >> codeInternal >> pointsForSpend >>
        pointsForEarn >> balance;
    const auto card = QSharedPointer<Card>::create(number);
    if (hasClient) {
        const auto client = QSharedPointer<Client>::create();
        client->setName(clientName);
        card->setClient(client);
    }
    const auto record =
        QSharedPointer<DocumentCardRecord>::create(card, int(systemType), int(codeInternal));
    record->setPointsForSpend(pointsForSpend);
    record->setPointsForEarn(pointsForEarn);
    record->setBonusBalance(balance);
    return record;
}

void writeDetail(QDataStream& stream, const DocumentImpactDetail& detail,
                 const CardRecords& records)
{
    stream << qint32(records.indexOf(detail.getCardRecord())) << detail.getCardIndex()
           << detail.getDateTime() << qint32(detail.getDiscountType())
           << qint32(detail.getDiscountMode()) << detail.getDiscountName()
           << qint32(detail.getDiscountObject()) << qint32(detail.getPosition())
           << detail.getDiscountRate() << detail.getDiscountSum()
           << qint32(detail.getImpactSource()) << detail.isMinPriceIgnored();
}

QSharedPointer<DocumentImpactDetail> readDetail(QDataStream& stream, const CardRecords& records)
{
    qint32 record = 0;
    QVariant cardIndex;
    QDateTime dateTime;
    qint32 type = 0;
    qint32 mode = 0;
    QString name;
    qint32 object = 0;
    qint32 position = 0;
    QVariant rate;
    double sum = 0;
    qint32 source = 0;
    bool minPriceIgnored = false;
    stream >> record >> cardIndex >> dateTime >> type >> mode >> name >> object >> position >>
        rate >> sum >> source >> minPriceIgnored;
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(records.value(record));
    detail->setCardIndex(cardIndex);
    detail->setDateTime(dateTime);
    detail->setDiscountType(EDiscountType::type(type));
    detail->setDiscountMode(EDiscountMode::type(mode));
    detail->setDiscountName(name);
    detail->setDiscountObject(EDiscountObject::type(object));
    detail->setPosition(position);
    detail->setDiscountRate(rate);
    detail->setDiscountSum(sum);
    detail->setImpactSource(EImpactSource::source(source));
    detail->setMinPriceIgnored(minPriceIgnored);
    return detail;
}

void writeImpact(QDataStream& stream, const DocumentImpact& impact, const CardRecords& records)
{
    const bool bonus = dynamic_cast<const BonusImpact*>(&impact) != nullptr;
    stream << qint32(bonus ? ImpactKind::Bonus : ImpactKind::Discount);
    writeDetail(stream, *impact.getTotals(), records);
    stream << impact.getPositionSums();
}

QSharedPointer<DocumentImpact> readImpact(QDataStream& stream, const CardRecords& records)
{
    qint32 kind = 0;
    stream >> kind;
    const auto detail = readDetail(stream, records);
    QSharedPointer<DocumentImpact> impact;
    if (ImpactKind(kind) == ImpactKind::Bonus) {
        impact = QSharedPointer<BonusImpact>::create(detail);
    } else {
        impact = QSharedPointer<DiscountImpact>::create(detail);
    }
    QMap<int, double> positionSums;
    stream >> positionSums;
    for (auto it = positionSums.cbegin(); it != positionSums.cend(); ++it) {
        impact->addDetailForPosition(it.key(), it.value());
    }
    return impact;
}

} // namespace

void documentstream::write(QDataStream& stream, const Document& document)
{
    const CardRecords records = document.getCardRecords();
    const auto impacts = document.getImpacts();
    stream << document.getDocumentId() << qint32(document.getCheckNumber())
           << qint32(document.getDocumentType()) << document.getDateTime()
           << document.getSaleDocumentId() << money::toKopecks(document.getPaymentSum()).value_or(0)
           << document.getPluginData();
    stream << qint32(records.size());
    for (const auto& record : records) {
        writeCardRecord(stream, *record);
    }
    stream << qint32(impacts.size());
    for (const auto& impact : impacts) {
        writeImpact(stream, *impact, records);
    }
}

QSharedPointer<Document> documentstream::read(QDataStream& stream)
{
    const auto document = QSharedPointer<Document>::create();
    QString id;
    qint32 number = 0;
    qint32 type = 0;
    QDateTime dateTime;
    QString saleId;
    qint64 payment = 0;
    QMap<QString, QVariantMap> pluginData;
    stream >> id >> number >> type >> dateTime >> saleId >> payment >> pluginData;
    document->setDocumentId(id);
    document->setCheckNumber(number);
    document->setDocumentType(type);
    document->setDateTime(dateTime);
    document->setSaleDocumentId(saleId);
    document->setPaymentKopecks(payment);
    document->setPluginData(pluginData);
    qint32 count = 0;
    stream >> count;
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        document->addCardRecord(readCardRecord(stream));
    }
    stream >> count;
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        document->addImpact(readImpact(stream, document->getCardRecords()));
    }
    return document;
}

} // namespace till

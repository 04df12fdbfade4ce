// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/documentstream.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "host/document/money.h"
#include "till/checks/storedvalues.h"

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
    stream >> number >> hasClient >> clientName >> systemType >> codeInternal >> pointsForSpend;
    const QVariant pointsForEarn = storedvalues::readVariant(stream);
    const QVariant balance = storedvalues::readVariant(stream);
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

/// An enumeration's number, which must be one that it can hold.
template <typename Enumeration>
Enumeration readEnumeration(QDataStream& stream, qint32 largest)
{
    qint32 number = 0;
    stream >> number;
    if (number < 0 || number > largest) {
        stream.setStatus(QDataStream::ReadCorruptData);
        number = 0;
    }
    return Enumeration(number);
}

QSharedPointer<DocumentImpactDetail> readDetail(QDataStream& stream, const CardRecords& records)
{
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    qint32 record = 0;
    QDateTime dateTime;
    QString name;
    qint32 position = 0;
    double sum = 0;
    bool minPriceIgnored = false;
    stream >> record;
    detail->setCardRecord(records.value(record));
    detail->setCardIndex(storedvalues::readVariant(stream));
    stream >> dateTime;
    detail->setDateTime(dateTime);
    // the largest numbers that fit into as many bits as the known ones take
    detail->setDiscountType(readEnumeration<EDiscountType::type>(stream, 7));
    detail->setDiscountMode(readEnumeration<EDiscountMode::type>(stream, 3));
    stream >> name;
    detail->setDiscountName(name);
    detail->setDiscountObject(readEnumeration<EDiscountObject::type>(stream, 1));
    stream >> position;
    detail->setPosition(position);
    detail->setDiscountRate(storedvalues::readVariant(stream));
    stream >> sum;
    detail->setDiscountSum(sum);
    detail->setImpactSource(readEnumeration<EImpactSource::source>(stream, 3));
    stream >> minPriceIgnored;
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
    const auto kind = readEnumeration<ImpactKind>(stream, qint32(ImpactKind::Bonus));
    const auto detail = readDetail(stream, records);
    QSharedPointer<DocumentImpact> impact;
    if (kind == ImpactKind::Bonus) {
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

QMap<QString, QVariantMap> readPluginData(QDataStream& stream)
{
    QMap<QString, QVariantMap> data;
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        QString owner;
        stream >> owner;
        data.insert(owner, storedvalues::readMap(stream));
    }
    return data;
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
    stream >> id >> number >> type >> dateTime >> saleId >> payment;
    document->setDocumentId(id);
    document->setCheckNumber(number);
    document->setDocumentType(type);
    document->setDateTime(dateTime);
    document->setSaleDocumentId(saleId);
    document->setPaymentKopecks(payment);
    document->setPluginData(readPluginData(stream));
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

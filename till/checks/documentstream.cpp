// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/documentstream.h"

#include "host/document/bonusimpact.h"
#include "host/document/discountimpact.h"
#include "till/checks/documentfields.h"
#include "till/checks/fieldstream.h"
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
           << qint32(record.getLoyaltySystemType()) << qint32(record.getCodeInternal());
    fieldstream::write(stream, record, documentfields::ofCardRecord());
}

QSharedPointer<DocumentCardRecord> readCardRecord(QDataStream& stream, int version)
{
    QString number;
    bool hasClient = false;
    QString clientName;
    qint32 systemType = 0;
    qint32 codeInternal = 0;
    stream >> number >> hasClient >> clientName >> systemType >> codeInternal;
    const auto card = QSharedPointer<Card>::create(number);
    if (hasClient) {
        const auto client = QSharedPointer<Client>::create();
        client->setName(clientName);
        card->setClient(client);
    }
    const auto record =
        QSharedPointer<DocumentCardRecord>::create(card, int(systemType), int(codeInternal));
    fieldstream::read(stream, *record, documentfields::ofCardRecord(), version);
    return record;
}

void writeImpact(QDataStream& stream, const DocumentImpact& impact, const CardRecords& records)
{
    const bool bonus = dynamic_cast<const BonusImpact*>(&impact) != nullptr;
    stream << qint32(bonus ? ImpactKind::Bonus : ImpactKind::Discount);
    const auto totals = impact.getTotals();
    stream << qint32(records.indexOf(totals->getCardRecord()));
    fieldstream::write(stream, *totals, documentfields::ofImpactDetail());
    stream << impact.getPositionSums();
}

QSharedPointer<DocumentImpact> readImpact(QDataStream& stream, const CardRecords& records,
                                          int version)
{
    qint32 kind = 0;
    qint32 record = 0;
    stream >> kind >> record;
    if (kind != qint32(ImpactKind::Discount) && kind != qint32(ImpactKind::Bonus)) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    const auto detail = QSharedPointer<DocumentImpactDetail>::create();
    detail->setCardRecord(records.value(record));
    fieldstream::read(stream, *detail, documentfields::ofImpactDetail(), version);
    QSharedPointer<DocumentImpact> impact;
    if (kind == qint32(ImpactKind::Bonus)) {
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

int documentstream::version()
{
    return std::max({fieldstream::versionOf(documentfields::ofDocument()),
                     fieldstream::versionOf(documentfields::ofCardRecord()),
                     fieldstream::versionOf(documentfields::ofImpactDetail())});
}

void documentstream::write(QDataStream& stream, const Document& document)
{
    const CardRecords records = document.getCardRecords();
    const auto impacts = document.getImpacts();
    fieldstream::write(stream, document, documentfields::ofDocument());
    stream << document.getPluginData();
    stream << qint32(records.size());
    for (const auto& record : records) {
        writeCardRecord(stream, *record);
    }
    stream << qint32(impacts.size());
    for (const auto& impact : impacts) {
        writeImpact(stream, *impact, records);
    }
}

QSharedPointer<Document> documentstream::read(QDataStream& stream, int version)
{
    const auto document = QSharedPointer<Document>::create();
    fieldstream::read(stream, *document, documentfields::ofDocument(), version);
    document->setPluginData(readPluginData(stream));
    qint32 count = 0;
    stream >> count;
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        document->addCardRecord(readCardRecord(stream, version));
    }
    stream >> count;
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        document->addImpact(readImpact(stream, document->getCardRecords(), version));
    }
    return document;
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "ourhost.h"

#include "host/document/document.h"
#include "ourqueue.h"
#include "tests/support/testfolder.h"
#include "till/checks/documentstream.h"

#include <QDataStream>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

/// A text as TOML writes it, which JSON's escapes are a part of.
QByteArray quoted(const QString& text)
{
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

} // namespace

QSharedPointer<AbstractDocument> OurHost::makeDocument(const contract::DocumentData& data)
{
    auto document = QSharedPointer<Document>::create();
    fill(*document, data);
    return document;
}

void OurHost::fill(Document& document, const contract::DocumentData& data)
{
    document.setDocumentId(data.documentId);
    document.setCheckNumber(data.checkNumber);
    document.setDocumentType(data.documentType);
    document.setDateTime(data.dateTime);
    document.setSaleDocumentId(data.saleDocumentId);
    document.setGoodsItems(data.goodsItems);
    for (const auto& impact : data.impacts) {
        document.addImpact(impact);
    }
    for (const auto& record : data.cardRecords) {
        document.addCardRecord(record);
    }
    document.setPaymentKopecks(data.paymentKopecks);
}

QSharedPointer<AbstractDocument>
OurHost::suspendAndRestore(const QSharedPointer<AbstractDocument>& document)
{
    const TestFolder folder;
    QFile written(folder.write(u"document"_s, {}));
    EXPECT_TRUE(written.open(QIODevice::WriteOnly));
    QDataStream out(&written);
    till::documentstream::write(out, dynamic_cast<const Document&>(*document));
    written.close();
    QFile kept(written.fileName());
    EXPECT_TRUE(kept.open(QIODevice::ReadOnly));
    QDataStream in(&kept);
    return till::documentstream::read(in, till::documentstream::version());
}

std::unique_ptr<Config> OurHost::makeConfig(const QMap<QString, QVariant>& values)
{
    QMap<QString, QByteArray> tables;
    for (const auto& [key, value] : values.asKeyValueRange()) {
        const bool isText = value.typeId() == QMetaType::QString;
        tables[key.section(u':', 0, 0)] +=
            key.section(u':', 1).toUtf8() + " = " +
            (isText ? quoted(value.toString()) : value.toByteArray()) + '\n';
    }
    QByteArray toml;
    for (const auto& [table, lines] : tables.asKeyValueRange()) {
        toml += '[' + table.toUtf8() + "]\n" + lines;
    }
    const TestFolder folder;
    auto config = std::make_unique<Config>();
    config->load(folder.write(u"orva.toml"_s, toml));
    return config;
}

std::unique_ptr<contract::QueueUnderTest> OurHost::makeQueue()
{
    return std::make_unique<OurQueue>();
}

} // namespace tests

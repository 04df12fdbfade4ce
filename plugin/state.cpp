// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What is kept in the document and survives a restart: the last answer and the bonus records.

#include "plugin/orva.h"

#include "client/harmlessxml.h"
#include "client/repeatedlines.h"
#include "client/service.h"
#include "host/services/session.h"
#include "host/xml/xmlwrapper.h"

#include <QMetaProperty>

#include <log4qt/logger.h>

using namespace Qt::StringLiterals;

namespace {

QString stateOwner()
{
    return QString::fromUtf8(Orva::staticMetaObject.className());
}

struct RecordProperty
{
    QString name;
    QMetaProperty property;
};

/// All properties of a bonus record in the order of their indices, looked up once.
const QList<RecordProperty>& recordProperties()
{
    static const QList<RecordProperty> all = [] {
        const QMetaObject& gadget = DocumentBonusRecord::staticMetaObject;
        QList<RecordProperty> properties;
        for (int index = 0; index < gadget.propertyCount(); ++index) {
            const QMetaProperty property = gadget.property(index);
            properties.append({QString::fromLatin1(property.name()), property});
        }
        return properties;
    }();
    return all;
}

QVariantMap toMap(const DocumentBonusRecord& record)
{
    QVariantMap map;
    for (const RecordProperty& known : recordProperties()) {
        map.insert(known.name, known.property.readOnGadget(&record));
    }
    return map;
}

DocumentBonusRecord toRecord(const QVariantMap& map)
{
    const QMetaObject& gadget = DocumentBonusRecord::staticMetaObject;
    DocumentBonusRecord record;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        const int index = gadget.indexOfProperty(entry.key().toLatin1().constData());
        if (index >= 0) {
            gadget.property(index).writeOnGadget(&record, entry.value());
        }
    }
    return record;
}

QDomDocument toDocument(const QString& text, Log4Qt::Logger& log)
{
    QDomDocument document;
    QString harm = orva::harmInXml(text);
    if (harm.isEmpty()) {
        document.setContent(text);
        harm = orva::harmInLines(QSharedPointer<XmlWrapper>::create(), document.documentElement());
    }
    if (!harm.isEmpty()) {
        log.error(u"Сохранённый ответ сервера не разбирается: %1"_s, harm);
        document = QDomDocument();
    }
    return document;
}

} // namespace

void Orva::updatePluginData() const
{
    logger->debug(u"Запись в документ данных системы лояльности"_s);
    // The session's document, which need not be the one that the host lets this system watch.
    const auto check = orva::service<Session>()->getDocument();
    if (check.isNull()) {
        logger->error(u"Данные системы лояльности не записаны: в сессии нет документа"_s);
        return;
    }
    const QString owner = stateOwner();
    check->setPluginValue(owner, u"lastResponse"_s, interface->getLastResponse().toString(1));
    QVariantList records;
    for (const DocumentBonusRecord& record : bonusRecords) {
        records.append(QVariant(toMap(record)));
    }
    check->setPluginValue(owner, u"bonusRecords"_s, records);
}

bool Orva::restoreLoyaltySystem()
{
    logger->debug(u"Восстановление данных системы лояльности из документа"_s);
    takePoints(cardRecordOf(document));
    if (document.isNull()) {
        interface->setLastResponse(QDomDocument());
        return true;
    }
    const QString owner = stateOwner();
    const QString lastResponse =
        document->getPluginValue(owner, u"lastResponse"_s, QVariant()).toString();
    interface->setLastResponse(toDocument(lastResponse, *logger));
    const QVariantList records =
        document->getPluginValue(owner, u"bonusRecords"_s, QVariant()).toList();
    for (const QVariant& record : records) {
        // Added to what is held: a host that restores twice clears in between.
        bonusRecords.append(toRecord(record.toMap()));
    }
    document->refreshLoyaltyData();
    return true;
}

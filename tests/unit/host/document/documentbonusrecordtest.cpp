// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/document/documentbonusrecord.h"
#include "tests/unit/client/printers.h"

#include <QMap>
#include <QMetaProperty>

#include <gtest/gtest.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QDateTime moment(QDate(2024, 3, 5), QTime(7, 8, 9, 250));

DocumentBonusRecord filled()
{
    DocumentBonusRecord record;
    record.cardNumber = u"7700001"_s;
    record.position = 3;
    record.bonusAmount = 12.345;
    record.valutCode = 1200;
    record.dateTime = moment;
    record.sessionContext = u"смена 4"_s;
    record.accrual = true;
    return record;
}

QMetaProperty property(const char* name)
{
    const QMetaObject& gadget = DocumentBonusRecord::staticMetaObject;
    return gadget.property(gadget.indexOfProperty(name));
}

TEST(DocumentBonusRecord, PropertiesAreExactlyTheSevenFields)
{
    QMap<QString, int> types;
    const QMetaObject& gadget = DocumentBonusRecord::staticMetaObject;
    for (int i = 0; i < gadget.propertyCount(); ++i) {
        types.insert(QString::fromLatin1(gadget.property(i).name()), gadget.property(i).typeId());
        EXPECT_TRUE(gadget.property(i).isReadable()) << gadget.property(i).name();
        EXPECT_TRUE(gadget.property(i).isWritable()) << gadget.property(i).name();
    }
    EXPECT_EQ(gadget.propertyCount(), 7);
    EXPECT_EQ(types, (QMap<QString, int>{{u"cardNumber"_s, QMetaType::QString},
                                         {u"position"_s, QMetaType::QVariant},
                                         {u"bonusAmount"_s, QMetaType::Double},
                                         {u"valutCode"_s, QMetaType::Int},
                                         {u"dateTime"_s, QMetaType::QDateTime},
                                         {u"sessionContext"_s, QMetaType::QString},
                                         {u"accrual"_s, QMetaType::Bool}}));
}

TEST(DocumentBonusRecord, IsEmptyWhenDefaultConstructed)
{
    const DocumentBonusRecord record;
    EXPECT_TRUE(record.cardNumber.isEmpty());
    EXPECT_FALSE(record.position.isValid());
    EXPECT_EQ(record.bonusAmount, 0.0);
    EXPECT_EQ(record.valutCode, 0);
    EXPECT_FALSE(record.dateTime.isValid());
    EXPECT_TRUE(record.sessionContext.isEmpty());
    EXPECT_FALSE(record.accrual);
}

TEST(DocumentBonusRecord, PropertiesReadTheFields)
{
    const DocumentBonusRecord record = filled();
    EXPECT_EQ(property("cardNumber").readOnGadget(&record), QVariant(u"7700001"_s));
    EXPECT_EQ(property("position").readOnGadget(&record), QVariant(3));
    EXPECT_EQ(property("bonusAmount").readOnGadget(&record), QVariant(12.345));
    EXPECT_EQ(property("valutCode").readOnGadget(&record), QVariant(1200));
    EXPECT_EQ(property("dateTime").readOnGadget(&record), QVariant(moment));
    EXPECT_EQ(property("sessionContext").readOnGadget(&record), QVariant(u"смена 4"_s));
    EXPECT_EQ(property("accrual").readOnGadget(&record), QVariant(true));
}

TEST(DocumentBonusRecord, PropertiesWriteTheFields)
{
    DocumentBonusRecord record;
    EXPECT_TRUE(property("cardNumber").writeOnGadget(&record, u"7700001"_s));
    EXPECT_TRUE(property("position").writeOnGadget(&record, 3));
    EXPECT_TRUE(property("bonusAmount").writeOnGadget(&record, 12.345));
    EXPECT_TRUE(property("valutCode").writeOnGadget(&record, 1200));
    EXPECT_TRUE(property("dateTime").writeOnGadget(&record, moment));
    EXPECT_TRUE(property("sessionContext").writeOnGadget(&record, u"смена 4"_s));
    EXPECT_TRUE(property("accrual").writeOnGadget(&record, true));
    EXPECT_EQ(record, filled());
}

TEST(DocumentBonusRecord, CopiesAreEqualAndIndependent)
{
    const DocumentBonusRecord original = filled();
    DocumentBonusRecord copy(original);
    EXPECT_EQ(copy, original);
    copy.bonusAmount = 1;
    EXPECT_EQ(original.bonusAmount, 12.345);
    EXPECT_EQ(DocumentBonusRecord(), DocumentBonusRecord());
}

TEST(DocumentBonusRecord, DiffersWhenAnyFieldDoes)
{
    const std::pair<const char*, QVariant> changes[] = {
        {"cardNumber", u"7700002"_s},
        {"position", 4},
        {"bonusAmount", 12.346},
        {"valutCode", 1201},
        {"dateTime", moment.addMSecs(1)},
        {"sessionContext", u"смена 5"_s},
        {"accrual", false},
    };
    EXPECT_EQ(static_cast<int>(std::size(changes)),
              DocumentBonusRecord::staticMetaObject.propertyCount());
    for (const auto& [name, value] : changes) {
        DocumentBonusRecord record = filled();
        ASSERT_TRUE(property(name).writeOnGadget(&record, value)) << name;
        EXPECT_FALSE(record == filled()) << name;
    }
}

} // namespace

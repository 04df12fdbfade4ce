// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/subject.h"

#include "host/document/documentbonusrecord.h"

#include <QMetaProperty>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

void contract::addBonusRecordPromises() {}

namespace {

const QMap<QByteArray, QVariant>& fields()
{
    static const QMap<QByteArray, QVariant> values{
        {"cardNumber", u"77"_s},
        {"position", 3},
        {"bonusAmount", 2.5},
        {"valutCode", 1200},
        {"dateTime", QDateTime(QDate(2026, 3, 1), QTime(18, 45))},
        {"sessionContext", u"shift 12"_s},
        {"accrual", true},
    };
    return values;
}

TEST(BonusRecordContract, EveryFieldIsReadAndWrittenByItsPropertysName)
{
    DocumentBonusRecord record;
    const QMetaObject& meta = DocumentBonusRecord::staticMetaObject;
    for (const auto& [name, value] : fields().asKeyValueRange()) {
        const int index = meta.indexOfProperty(name.constData());
        ASSERT_GE(index, 0) << name.constData();
        EXPECT_TRUE(meta.property(index).writeOnGadget(&record, value)) << name.constData();
    }
    for (const auto& [name, value] : fields().asKeyValueRange()) {
        const QMetaProperty property = meta.property(meta.indexOfProperty(name.constData()));
        EXPECT_EQ(property.readOnGadget(&record), value) << name.constData();
    }
    EXPECT_EQ(record.bonusAmount, 2.5);
    EXPECT_EQ(record.position.toInt(), 3);
}

TEST(BonusRecordContract, EqualsACopyAndDiffersInEachField)
{
    const DocumentBonusRecord empty;
    EXPECT_TRUE(empty == DocumentBonusRecord(empty));
    const QMetaObject& meta = DocumentBonusRecord::staticMetaObject;
    for (const auto& [name, value] : fields().asKeyValueRange()) {
        DocumentBonusRecord other;
        meta.property(meta.indexOfProperty(name.constData())).writeOnGadget(&other, value);
        EXPECT_FALSE(empty == other) << name.constData();
    }
}

} // namespace

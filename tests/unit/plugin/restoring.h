// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/unit/plugin/orvatest.h"

namespace tests {

/// A plug-in that restores from what the test has stored; its client has an answer that the
/// restored one has to replace.
class Restoring : public OrvaTest
{
protected:
    Restoring() { keepFormerAnswer(); }

    void keepFormerAnswer()
    {
        QDomDocument former;
        former.setContent(QStringLiteral("<former/>"));
        interface->setLastResponse(former);
    }

    void store(const QString& key, const QVariant& value)
    {
        base->pluginData[QStringLiteral("Orva")].insert(key, value);
    }

    bool restore() { return orva.restoreLoyaltySystem(); }
};

/// An accrual with a value of its own in every field.
inline DocumentBonusRecord filledRecord()
{
    DocumentBonusRecord filled = bonusRecord(12.345, 3);
    filled.cardNumber = QStringLiteral("7700001");
    filled.valutCode = 1200;
    filled.dateTime = QDateTime(QDate(2024, 3, 5), QTime(7, 8, 9, 250));
    filled.sessionContext = QStringLiteral("смена 4");
    filled.accrual = true;
    return filled;
}

} // namespace tests

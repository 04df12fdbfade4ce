// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/erase/erasurereport.h"

#include "console/printable.h"
#include "till/checks/cardnumber.h"
#include "till/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace till {

QString ErasureReport::text(const QString& card) const
{
    QString text = Text::tr("Card %1 is taken out of:\n").arg(cardnumber::shortened(card));
    const auto add = [&text](const QString& what, int count) {
        text += u"  %1: %2\n"_s.arg(what).arg(count);
    };
    add(Text::tr("checks"), checks);
    if (storedChecks > 0) {
        add(Text::tr("checks in the store"), storedChecks);
    }
    add(Text::tr("messages of the queue"), messages);
    add(Text::tr("records"), records);
    add(Text::tr("support archives"), archives);
    add(Text::tr("pages of cases"), pages);
    add(Text::tr("logs"), logs);
    if (delivered > 0) {
        text += Text::tr("Delivered before: %1\n").arg(delivered);
    }
    for (const QString& sentence : left) {
        text += Text::tr("Left: %1\n").arg(console::printable::line(sentence));
    }
    return text;
}

QString ErasureReport::json(const QString& card) const
{
    const QJsonObject object{{u"card"_s, cardnumber::shortened(card)},
                             {u"checks"_s, checks},
                             {u"storedChecks"_s, storedChecks},
                             {u"messages"_s, messages},
                             {u"delivered"_s, delivered},
                             {u"records"_s, records},
                             {u"archives"_s, archives},
                             {u"pages"_s, pages},
                             {u"logs"_s, logs},
                             {u"left"_s, QJsonArray::fromStringList(left)}};
    return QString::fromUtf8(QJsonDocument(object).toJson());
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/spendinganswer.h"

using namespace Qt::StringLiterals;

namespace tests {

SpendingAnswer::SpendingAnswer(std::size_t lines)
{
    QDomElement root = answer.createElement(u"answer"_s);
    answer.appendChild(root);
    QDomElement items = answer.createElement(u"items"_s);
    root.appendChild(items);
    for (std::size_t i = 0; i < lines; ++i) {
        QDomElement item = answer.createElement(u"RawItem"_s);
        items.appendChild(item);
        positions.append(addText(item, u"id"_s));
        QDomElement awards = answer.createElement(u"awards"_s);
        item.appendChild(awards);
        QDomElement itemAwards = answer.createElement(u"RawItemAwards"_s);
        awards.appendChild(itemAwards);
        allowances.append(addText(itemAwards, u"allowBonusInCurrency"_s));
    }
}

QDomText SpendingAnswer::addText(QDomElement& parent, const QString& name)
{
    QDomElement element = answer.createElement(name);
    QDomText text = answer.createTextNode(QString());
    element.appendChild(text);
    parent.appendChild(element);
    return text;
}

void SpendingAnswer::set(const std::vector<SpendingLine>& lines)
{
    qsizetype i = 0;
    for (const SpendingLine& line : lines) {
        positions[i].setData(QString::number(line.position));
        allowances[i].setData(QString::number(line.allowance, 'g', 17));
        ++i;
    }
}

} // namespace tests

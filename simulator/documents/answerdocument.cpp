// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/answerdocument.h"

#include "simulator/documents/messagetext.h"
#include "simulator/documents/names.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// Calls step for every goods line below root.
template <typename Step>
void forEachLine(Element& root, Step step)
{
    for (Element& items : root.children) {
        if (items.name != names::items) {
            continue;
        }
        for (Element& item : items.children) {
            if (item.name == names::rawItem) {
                step(item);
            }
        }
    }
}

Element carriedBack(const Element& request)
{
    Element answer = withoutUsed(request);
    answer.remove(names::client);
    answer.remove(names::awards);
    answer.remove(names::informing);
    forEachLine(answer, [](Element& item) { item.remove(names::awards); });
    return answer;
}

void appendClient(Element& answer, const Card& card, Kopecks balance)
{
    Element& client = answer.append(names::client).append(names::rawCheckClient);
    client.append(names::name, card.name);
    client.append(names::surname, card.surname);
    client.append(names::account)
        .append(names::rawCheckAccount)
        .append(names::balance, writeKopecks(balance));
}

void appendAwards(Element& answer, const Grant& grant)
{
    Element& awards = answer.append(names::awards).append(names::rawCheckAwards);
    awards.append(names::allowBonus, writeKopecks(grant.allowBonus));
    awards.append(names::awardBonus, writeKopecks(grant.awardBonus));
}

void appendMessages(Element& answer, const Rules& rules, const QHash<QString, QString>& values)
{
    Element& informing = answer.append(names::informing);
    for (const Message& message : rules.messages) {
        Element& entry = informing.append(names::rawCheckInforming);
        entry.append(names::communicationChannel, message.channel);
        entry.append(names::info, messageText(message.text, values));
    }
}

Kopecks grantedAmount(const Element& item, QLatin1StringView name)
{
    const std::vector<const Element*> found = item.all({names::awards, names::rawItemAwards, name});
    return found.empty() ? 0 : readKopecks(found.front()->text).value_or(0);
}

} // namespace

Element saleAnswer(const Element& request, const Rules& rules, const Card& card, Kopecks balance,
                   const Grant& grant)
{
    Element answer = carriedBack(request);
    Kopecks discounts = 0;
    auto line = grant.lines.begin();
    forEachLine(answer, [&](Element& item) {
        Element& awards = item.append(names::awards).append(names::rawItemAwards);
        awards.append(names::discount, writeKopecks(line->discount));
        awards.append(names::discountOnChange, writeKopecks(line->discountOnChange));
        awards.append(names::awardBonus, writeKopecks(line->awardBonus));
        awards.append(names::allowBonusInCurrency, writeKopecks(line->allowBonus));
        discounts += line->discount + line->discountOnChange;
        ++line;
    });
    appendClient(answer, card, balance);
    appendAwards(answer, grant);
    const Element* total = request.child(names::total);
    const Kopecks gross = total == nullptr ? 0 : readKopecks(total->text).value_or(0);
    appendMessages(answer, rules,
                   {{u"name"_s, card.name},
                    {u"surname"_s, card.surname},
                    {u"balance"_s, writeKopecks(balance)},
                    {u"spend"_s, writeKopecks(grant.allowBonus)},
                    {u"earn"_s, writeKopecks(grant.awardBonus)},
                    {u"discount"_s, writeKopecks(discounts)},
                    {u"total"_s, writeKopecks(gross - discounts)}});
    return answer;
}

Element returnAnswer(const Element& request, const Card& card, Kopecks balance, const Grant& grant)
{
    Element answer = carriedBack(request);
    auto line = grant.lines.begin();
    forEachLine(answer, [&](Element& item) {
        Element& awards = item.append(names::awards).append(names::rawItemAwards);
        awards.append(names::awardBonus, writeKopecks(line->awardBonus));
        ++line;
    });
    appendClient(answer, card, balance);
    appendAwards(answer, grant);
    return answer;
}

Element withoutUsed(const Element& confirmation)
{
    Element copy = confirmation;
    copy.remove(names::payments);
    forEachLine(copy, [](Element& item) { item.remove(names::usedAwards); });
    return copy;
}

std::vector<LineGrant> grantedLines(const Element& answer)
{
    std::vector<LineGrant> lines;
    for (const Element* item : answer.all({names::items, names::rawItem})) {
        LineGrant line;
        line.id = item->child(names::id) == nullptr ? 0 : item->child(names::id)->text.toInt();
        line.discount = grantedAmount(*item, names::discount);
        line.discountOnChange = grantedAmount(*item, names::discountOnChange);
        line.awardBonus = grantedAmount(*item, names::awardBonus);
        line.allowBonus = grantedAmount(*item, names::allowBonusInCurrency);
        lines.push_back(line);
    }
    return lines;
}

} // namespace simulator

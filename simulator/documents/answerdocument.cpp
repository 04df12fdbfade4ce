// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/answerdocument.h"

#include "simulator/documents/names.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Document carriedBack(const Element& request)
{
    Document answer = withoutUsed(request);
    Element root = answer.root();
    root.remove(names::client);
    root.remove(names::awards);
    root.remove(names::informing);
    for (Element& item : root.all({names::items, names::rawItem})) {
        item.remove(names::awards);
    }
    return answer;
}

void appendClient(Element answer, const Card& card, Kopecks balance)
{
    Element client = answer.append(names::client).append(names::rawCheckClient);
    client.append(names::name, card.name);
    client.append(names::surname, card.surname);
    client.append(names::account)
        .append(names::rawCheckAccount)
        .append(names::balance, writeKopecks(balance));
}

void appendAwards(Element answer, const Grant& grant)
{
    Element awards = answer.append(names::awards).append(names::rawCheckAwards);
    awards.append(names::allowBonus, writeKopecks(grant.allowBonus));
    awards.append(names::awardBonus, writeKopecks(grant.awardBonus));
}

void appendMessages(Element answer, const std::vector<Message>& messages,
                    const QHash<QString, QString>& values)
{
    Element informing = answer.append(names::informing);
    for (const Message& message : messages) {
        Element entry = informing.append(names::rawCheckInforming);
        entry.append(names::communicationChannel, message.channel);
        entry.append(names::info, messageText(message.text, values));
    }
}

Kopecks grantedAmount(const Element& item, QLatin1StringView name)
{
    const std::vector<Element> found = item.all({names::awards, names::rawItemAwards, name});
    return found.empty() ? 0 : readKopecks(found.front().text()).value_or(0);
}

} // namespace

Document saleAnswer(const Element& request, const std::vector<Message>& messages, const Card& card,
                    Kopecks balance, const Grant& grant)
{
    Document answer = carriedBack(request);
    const Element root = answer.root();
    Kopecks discounts = 0;
    auto line = grant.lines.begin();
    for (Element& item : root.all({names::items, names::rawItem})) {
        Element awards = item.append(names::awards).append(names::rawItemAwards);
        awards.append(names::discount, writeKopecks(line->discount));
        awards.append(names::discountOnChange, writeKopecks(line->discountOnChange));
        awards.append(names::awardBonus, writeKopecks(line->awardBonus));
        awards.append(names::allowBonusInCurrency, writeKopecks(line->allowBonus));
        discounts += line->discount + line->discountOnChange;
        ++line;
    }
    appendClient(root, card, balance);
    appendAwards(root, grant);
    const Kopecks gross = readKopecks(request.child(names::total).text()).value_or(0);
    appendMessages(root, messages,
                   {{u"name"_s, card.name},
                    {u"surname"_s, card.surname},
                    {u"balance"_s, writeKopecks(balance)},
                    {u"spend"_s, writeKopecks(grant.allowBonus)},
                    {u"earn"_s, writeKopecks(grant.awardBonus)},
                    {u"discount"_s, writeKopecks(discounts)},
                    {u"total"_s, writeKopecks(gross - discounts)}});
    return answer;
}

Document returnAnswer(const Element& request, const Card& card, Kopecks balance, const Grant& grant)
{
    Document answer = carriedBack(request);
    const Element root = answer.root();
    auto line = grant.lines.begin();
    for (Element& item : root.all({names::items, names::rawItem})) {
        Element awards = item.append(names::awards).append(names::rawItemAwards);
        awards.append(names::awardBonus, writeKopecks(line->awardBonus));
        ++line;
    }
    appendClient(root, card, balance);
    appendAwards(root, grant);
    return answer;
}

Document withoutUsed(const Element& confirmation)
{
    Document copy(confirmation);
    copy.root().remove(names::payments);
    for (Element& item : copy.root().all({names::items, names::rawItem})) {
        item.remove(names::usedAwards);
    }
    return copy;
}

std::vector<LineGrant> grantedLines(const Element& answer)
{
    std::vector<LineGrant> lines;
    for (const Element& item : answer.all({names::items, names::rawItem})) {
        LineGrant line;
        line.id = item.child(names::id).text().toInt();
        line.discount = grantedAmount(item, names::discount);
        line.discountOnChange = grantedAmount(item, names::discountOnChange);
        line.awardBonus = grantedAmount(item, names::awardBonus);
        line.allowBonus = grantedAmount(item, names::allowBonusInCurrency);
        lines.push_back(line);
    }
    return lines;
}

} // namespace simulator

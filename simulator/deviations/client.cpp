// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What an answer says of the card and what it grants.

#include "simulator/deviations/deviation.h"
#include "simulator/deviations/documentedits.h"
#include "simulator/deviations/notes.h"
#include "simulator/documents/amount.h"
#include "simulator/documents/endpoints.h"
#include "simulator/documents/names.h"
#include "simulator/documents/requestfacts.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/documents/xmlwriter.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Element balanceIn(const Element& root)
{
    return edits::first(root, {names::client, names::rawCheckClient, names::account,
                               names::rawCheckAccount, names::balance});
}

Kopecks amountOf(const Element& element)
{
    return readKopecks(element.text()).value_or(0);
}

void forgetAccount(const Element& root)
{
    for (Element& client : root.all({names::client, names::rawCheckClient})) {
        client.remove(names::account);
    }
}

/// The answer to a pre-check with another balance, which nothing that follows depends on.
Answer withBalance(Answer answer, Kopecks balance)
{
    const Document document = readXml(answer.body);
    edits::setText(balanceIn(document.root()), writeKopecks(balance));
    answer.body = writeXml(document.root());
    return answer;
}

bool isAnswered(const Request& request, const Answer& answer)
{
    return endpointOf(request) == endpoints::precheck && answer.status == 200 &&
           !answer.cardNumber.isEmpty();
}

Answer withoutNewAccounts(const Request& request, const Handler& sound, Notes& notes)
{
    Answer answer = sound(request);
    if (isAnswered(request, answer) && notes.isFirst(answer.cardNumber)) {
        const Document document = readXml(answer.body);
        forgetAccount(document.root());
        answer.body = writeXml(document.root());
    }
    return answer;
}

/// The balance as it was when the card was first asked for.
Answer withStaleBalance(const Request& request, const Handler& sound, Notes& notes)
{
    Answer answer = sound(request);
    if (!isAnswered(request, answer)) {
        return answer;
    }
    if (notes.kept(answer.cardNumber).isEmpty()) {
        notes.keep(answer.cardNumber, balanceIn(readXml(answer.body).root()).text().toUtf8());
    }
    return withBalance(answer,
                       readKopecks(QString::fromUtf8(notes.kept(answer.cardNumber))).value_or(0));
}

/// A rouble of the balance is set aside for each check that is asked for.
Answer withReserve(const Request& request, const Handler& sound, Notes& notes)
{
    Answer answer = sound(request);
    if (!isAnswered(request, answer)) {
        return answer;
    }
    const Kopecks balance = amountOf(balanceIn(readXml(answer.body).root()));
    return withBalance(answer, balance - 100 * (notes.count(answer.cardNumber, 1) - 1));
}

/// Sets an amount of every line from what else stands there.
void changeLines(const Element& root, QLatin1StringView name,
                 Kopecks (*amount)(const Element& line))
{
    for (const Element& line : edits::lines(root)) {
        const Element granted = edits::first(line, {names::awards, names::rawItemAwards, name});
        edits::setText(granted, writeKopecks(amount(line)));
    }
}

Kopecks hundredfold(const QString& text)
{
    return readKopecks(text).value_or(0) * 100;
}

const Deviation clientRows[] = {
    {"balance-missing-for-new-cards", "balance-always",
     QT_TRANSLATE_NOOP("Simulator", "the first answer for a card has no balance"),
     withoutNewAccounts},
    {"balance-missing-for-zero", "balance-always",
     QT_TRANSLATE_NOOP("Simulator", "a balance of zero is left out"),
     [](Element root) {
         if (amountOf(balanceIn(root)) == 0) {
             forgetAccount(root);
         }
     },
     blind},
    {"balance-null", "balance-always",
     QT_TRANSLATE_NOOP("Simulator", "the balance is the word null"),
     [](Element root) { edits::setText(balanceIn(root), u"null"_s); }, blind},
    {"client-missing", "balance-always",
     QT_TRANSLATE_NOOP("Simulator", "nothing is said of the card's owner and account"),
     [](Element root) { root.remove(names::client); }},
    {"balance-of-yesterday", "balance-booked",
     QT_TRANSLATE_NOOP("Simulator", "the balance stays as it was when the card was first seen"),
     withStaleBalance, blind},
    {"balance-anticipated", "balance-booked",
     QT_TRANSLATE_NOOP("Simulator", "the balance has the points that the check would earn"),
     [](Element root) {
         const Element award =
             edits::first(root, {names::awards, names::rawCheckAwards, names::awardBonus});
         edits::setText(balanceIn(root), writeKopecks(amountOf(balanceIn(root)) + amountOf(award)));
     },
     blind},
    {"points-reserved", "precheck-books-nothing",
     QT_TRANSLATE_NOOP("Simulator", "each pre-check sets a rouble of the balance aside"),
     withReserve},
    {"discount-below-least-total", "discount-within-line",
     QT_TRANSLATE_NOOP("Simulator", "the discount of a line is its total and one rouble more"),
     [](Element root) {
         changeLines(root, names::discount,
                     [](const Element& line) { return amountOf(line.child(names::total)) + 100; });
     }},
    {"points-for-all-of-a-line", "allow-within-line",
     QT_TRANSLATE_NOOP("Simulator", "points may pay a line's total as if there were no discounts"),
     [](Element root) {
         changeLines(root, names::allowBonusInCurrency,
                     [](const Element& line) { return amountOf(line.child(names::total)); });
     }},
    {"awards-hundredfold", "award-within-line",
     QT_TRANSLATE_NOOP("Simulator", "points to be earned are counted in kopecks"),
     [](Element root) {
         changeLines(root, names::awardBonus, [](const Element& line) {
             return hundredfold(
                 edits::first(line, {names::awards, names::rawItemAwards, names::awardBonus})
                     .text());
         });
         edits::rewrite(root, {names::awards, names::rawCheckAwards, names::awardBonus},
                        [](const QString& text) { return writeKopecks(hundredfold(text)); });
     },
     blind},
    {"allowance-above-balance", "check-allow",
     QT_TRANSLATE_NOOP("Simulator", "points may pay more of a check than the card holds"),
     [](Element root) {
         Kopecks sum = 0;
         for (const Element& line : root.all({names::items, names::rawItem, names::awards,
                                              names::rawItemAwards, names::allowBonusInCurrency})) {
             sum += amountOf(line);
         }
         edits::setText(
             edits::first(root, {names::awards, names::rawCheckAwards, names::allowBonus}),
             writeKopecks(sum));
     }},
    {"award-in-whole-roubles", "check-award",
     QT_TRANSLATE_NOOP("Simulator",
                       "the points that a check earns are whole, those of its lines not"),
     [](Element root) {
         edits::rewrite(
             root, {names::awards, names::rawCheckAwards, names::awardBonus},
             [](const QString& text) { return QString(text.section(u'.', 0, 0) + u".00"_s); });
     }},
    {"channels-in-capitals", "answer-fits-schema",
     QT_TRANSLATE_NOOP("Simulator", "the channels of messages are in capital letters: POS"),
     [](Element root) {
         edits::rewrite(root,
                        {names::informing, names::rawCheckInforming, names::communicationChannel},
                        [](const QString& text) { return text.toUpper(); });
     },
     blind},
    {"names-capitalised", "answer-fits-schema",
     QT_TRANSLATE_NOOP("Simulator", "the elements of the owner's name begin with capital letters"),
     [](Element root) {
         for (Element& client : root.all({names::client, names::rawCheckClient})) {
             client.append("Name"_L1, client.child(names::name).text());
             client.append("Surname"_L1, client.child(names::surname).text());
             client.remove(names::name);
             client.remove(names::surname);
         }
     }},
    {"returns-earn", "return-answer",
     QT_TRANSLATE_NOOP("Simulator", "the points that a return takes back are positive"),
     [](Element root) {
         if (!root.child(names::originalId)) {
             return;
         }
         const auto write = [](const QString& text) { return QString(text).remove(u'-'); };
         edits::rewrite(root, {names::awards, names::rawCheckAwards, names::awardBonus}, write);
         edits::rewrite(
             root,
             {names::items, names::rawItem, names::awards, names::rawItemAwards, names::awardBonus},
             write);
     }},
};

} // namespace

std::span<const Deviation> clientDeviations()
{
    return clientRows;
}

} // namespace simulator

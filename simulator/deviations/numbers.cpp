// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Numbers that a till reads as something else.

#include "simulator/deviations/deviation.h"
#include "simulator/deviations/documentedits.h"
#include "simulator/documents/amount.h"
#include "simulator/documents/names.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// 1234567.80 as 1 234 567.80.
QString grouped(QString text)
{
    const qsizetype least = text.startsWith(u'-') ? 1 : 0;
    const qsizetype point = text.indexOf(u'.');
    for (qsizetype at = (point < 0 ? text.size() : point) - 3; at > least; at -= 3) {
        text.insert(at, u' ');
    }
    return text;
}

const Deviation numberRows[] = {
    {"comma-decimals", "number-form", QT_TRANSLATE_NOOP("Simulator", "amounts have a comma: 10,50"),
     [](Element root) {
         edits::rewriteAmounts(
             root, [](const QString& text) { return QString(text).replace(u'.', u','); });
     }},
    {"grouped-thousands", "number-form",
     QT_TRANSLATE_NOOP("Simulator", "amounts from a thousand up are grouped: 1 234.50"),
     [](Element root) {
         edits::rewriteAmounts(root, [](const QString& text) { return grouped(text); });
     },
     blind},
    {"plus-before-points", "number-form",
     QT_TRANSLATE_NOOP("Simulator", "the points to be earned have a plus: +4.75"),
     [](Element root) {
         const auto plus = [](const QString& text) {
             return text.startsWith(u'-') ? text : u'+' + text;
         };
         edits::rewrite(
             root,
             {names::items, names::rawItem, names::awards, names::rawItemAwards, names::awardBonus},
             plus);
         edits::rewrite(root, {names::awards, names::rawCheckAwards, names::awardBonus}, plus);
     },
     blind},
    {"exponent-notation", "number-form",
     QT_TRANSLATE_NOOP("Simulator", "amounts are written as doubles are: 1.6e+02"),
     [](Element root) {
         edits::rewriteAmounts(
             root, [](const QString& text) { return QString::number(text.toDouble(), 'e', 6); });
     }},
    {"four-decimals", "number-form",
     QT_TRANSLATE_NOOP("Simulator", "amounts have four decimals: 4.7500"),
     [](Element root) {
         edits::rewriteAmounts(root, [](const QString& text) { return QString(text + u"00"_s); });
     }},
    {"currency-behind-amounts", "number-form",
     QT_TRANSLATE_NOOP("Simulator", "amounts have their currency behind them: 4.75 RUB"),
     [](Element root) {
         edits::rewriteAmounts(root, [](const QString& text) { return QString(text + u" RUB"_s); });
     }},
    {"balance-in-kopecks", "balance-booked",
     QT_TRANSLATE_NOOP("Simulator", "the balance is in kopecks: 50000"),
     [](Element root) {
         edits::rewrite(root,
                        {names::client, names::rawCheckClient, names::account,
                         names::rawCheckAccount, names::balance},
                        [](const QString& text) { return QString(text).remove(u'.'); });
     },
     blind},
    {"amounts-as-floats", "kopecks-exact",
     QT_TRANSLATE_NOOP("Simulator", "amounts are binary fractions of 32 bits"),
     [](Element root) {
         edits::rewriteAmounts(root, [](const QString& text) {
             return QString::number(static_cast<double>(text.toFloat()), 'f', 2);
         });
     },
     blind},
    {"nothing-for-zero", "number-form",
     QT_TRANSLATE_NOOP("Simulator", "an amount of zero is an empty element"),
     [](Element root) {
         edits::rewriteAmounts(root, [](const QString& text) {
             return readKopecks(text).value_or(1) == 0 ? QString() : text;
         });
     },
     blind},
    {"negative-discounts", "number-form",
     QT_TRANSLATE_NOOP("Simulator", "discounts are negative, as changes of the price"),
     [](Element root) {
         edits::rewrite(
             root,
             {names::items, names::rawItem, names::awards, names::rawItemAwards, names::discount},
             [](const QString& text) {
                 return readKopecks(text).value_or(0) > 0 ? u'-' + text : text;
             });
     }},
};

} // namespace

std::span<const Deviation> numberDeviations()
{
    return numberRows;
}

} // namespace simulator

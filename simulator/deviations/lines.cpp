// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Goods lines, identifiers and other fields of the till that do not come back as they were.

#include "simulator/deviations/deviation.h"
#include "simulator/deviations/documentedits.h"
#include "simulator/documents/check.h"
#include "simulator/documents/names.h"

#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// The till's time as ISO 8601 writes it, with the zone of Moscow.
QString withZone(const QString& text)
{
    return QString(text).replace(u' ', u'T') + u"+03:00"_s;
}

/// The till's time taken for that of Moscow and given back as UTC.
QString inUtc(const QString& text)
{
    const auto form = u"yyyy-MM-dd hh:mm:ss"_s;
    constexpr qint64 ahead = 3 * 3600;
    const QDateTime time = QDateTime::fromString(text, form);
    return time.isValid() ? time.addSecs(-ahead).toString(form) : text;
}

void addGift(Element root)
{
    const std::vector<Element> lines = edits::lines(root);
    if (lines.empty() || !lines.front().child(names::quantity)) {
        return;
    }
    xmlNode* const copy = xmlDocCopyNode(lines.front().handle(), lines.front().handle()->doc, 1);
    xmlAddSibling(lines.back().handle(), copy);
    edits::setText(Element(copy).child(names::id), u"9999"_s);
    edits::setText(Element(copy).child(names::sku), u"GIFT"_s);
    edits::setText(Element(copy).child(names::total), u"0.00"_s);
    Element(copy).remove(names::awards);
}

void loseLastLine(Element root)
{
    const std::vector<Element> lines = edits::lines(root);
    if (lines.size() > 1) {
        xmlUnlinkNode(lines.back().handle());
        xmlFreeNode(lines.back().handle());
    }
}

const Deviation lineRows[] = {
    {"padded-line-ids", "lines-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "identifiers of lines are texts with blanks around them"),
     [](Element root) {
         edits::rewrite(root, {names::items, names::rawItem, names::id},
                        [](const QString& text) { return u' ' + text + u' '; });
     }},
    {"named-line-ids", "lines-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "identifiers of lines are names: line-1"),
     [](Element root) {
         edits::rewrite(root, {names::items, names::rawItem, names::id},
                        [](const QString& text) { return QString(u"line-"_s + text); });
     },
     blind},
    {"line-ids-from-zero", "lines-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "identifiers of lines count from zero"),
     [](Element root) {
         edits::rewrite(root, {names::items, names::rawItem, names::id},
                        [](const QString& text) { return QString::number(text.toInt() - 1); });
     }},
    {"one-id-for-all-lines", "lines-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "all lines have the identifier of the first"),
     [](Element root) {
         for (const Element& line : edits::lines(root)) {
             edits::setText(line.child(names::id),
                            edits::lines(root).front().child(names::id).text());
         }
     }},
    {"last-line-lost", "lines-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "the last of several lines does not come back"), loseLastLine},
    {"gift-line-added", "lines-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "a gift that nobody asked for stands among the lines"), addGift,
     blind},
    {"check-id-padded", "id-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "the check's identifier is filled up with blanks"),
     [](Element root) {
         edits::rewrite(root, {names::id},
                        [](const QString& text) { return text.leftJustified(64); });
     },
     blind},
    {"check-id-replaced", "id-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "the answer has an identifier of the server's own"),
     [](Element root) {
         edits::rewrite(root, {names::id}, [](const QString& text) {
             return QString::number(qHash(text, size_t(0)) % 1'000'000'007);
         });
     }},
    {"card-masked", "check-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "the card's number comes back with stars"),
     [](Element root) { edits::rewrite(root, {names::cardNumber}, maskedCard); }},
    {"date-with-zone", "date-has-no-zone",
     QT_TRANSLATE_NOOP("Simulator", "the date comes back with a time zone"),
     [](Element root) { edits::rewrite(root, {names::date}, withZone); }, blind},
    {"date-in-utc", "date-has-no-zone",
     QT_TRANSLATE_NOOP("Simulator", "the date comes back as that of another time zone"),
     [](Element root) { edits::rewrite(root, {names::date}, inUtc); }},
    {"goods-codes-dropped", "check-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "the goods codes do not come back"),
     [](Element root) {
         for (Element& line : edits::lines(root)) {
             line.remove(names::sku);
         }
     }},
    {"quantities-cut", "check-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "quantities come back as whole numbers"),
     [](Element root) {
         edits::rewrite(root, {names::items, names::rawItem, names::quantity},
                        [](const QString& text) { return text.section(u'.', 0, 0); });
     },
     blind},
    {"letters-lost", "texts-kept",
     QT_TRANSLATE_NOOP("Simulator", "letters beyond ASCII come back as question marks"),
     [](Element root) {
         const auto write = [](const QString& text) {
             QString ascii = text;
             std::ranges::replace_if(
                 ascii, [](QChar c) { return c > u'~'; }, u'?');
             return ascii;
         };
         edits::rewrite(root, {names::pos}, write);
         edits::rewrite(root, {names::merchantId}, write);
         edits::rewrite(root, {names::items, names::rawItem, names::sku}, write);
     },
     blind},
    {"total-after-discounts", "check-carried-back",
     QT_TRANSLATE_NOOP("Simulator", "the check's total comes back less one rouble"),
     [](Element root) {
         edits::rewrite(root, {names::total}, [](const QString& text) {
             return writeKopecks(readKopecks(text).value_or(0) - 100);
         });
     }},
};

} // namespace

std::span<const Deviation> lineDeviations()
{
    return lineRows;
}

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/deviations/documentedits.h"

#include "simulator/documents/names.h"

#include <algorithm>

namespace simulator::edits {
namespace {

constexpr QLatin1StringView amounts[] = {names::total,
                                         names::minTotal,
                                         names::discount,
                                         names::awardBonus,
                                         names::allowBonus,
                                         names::discountOnChange,
                                         names::balance,
                                         names::allowBonusInCurrency,
                                         names::usedBonusInCurrency};

} // namespace

void setText(const Element& element, const QString& text)
{
    if (!element) {
        return;
    }
    xmlNodeSetContent(element.handle(), nullptr);
    const QByteArray bytes = text.toUtf8();
    // as text, in which nothing is markup
    xmlNodeAddContent(element.handle(), reinterpret_cast<const xmlChar*>(bytes.constData()));
}

void rewriteAmounts(const Element& root, QString (*write)(const QString& text))
{
    for (xmlNode* at = xmlFirstElementChild(root.handle()); at != nullptr;
         at = xmlNextElementSibling(at)) {
        const Element element(at);
        if (std::ranges::find(amounts, element.name()) != std::end(amounts)) {
            setText(element, write(element.text()));
        }
        rewriteAmounts(element, write);
    }
}

void rewrite(const Element& root, std::initializer_list<QLatin1StringView> path,
             QString (*write)(const QString& text))
{
    for (const Element& element : root.all(path)) {
        setText(element, write(element.text()));
    }
}

std::vector<Element> lines(const Element& root)
{
    return root.all({names::items, names::rawItem});
}

Element first(const Element& root, std::initializer_list<QLatin1StringView> path)
{
    const std::vector<Element> found = root.all(path);
    return found.empty() ? Element() : found.front();
}

} // namespace simulator::edits

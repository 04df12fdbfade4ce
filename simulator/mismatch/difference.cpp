// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/mismatch/difference.h"

#include "simulator/documents/check.h"
#include "simulator/documents/names.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

bool isMoney(const QString& name)
{
    static constexpr QLatin1StringView amounts[] = {names::total,
                                                    names::minTotal,
                                                    names::discount,
                                                    names::discountOnChange,
                                                    names::awardBonus,
                                                    names::allowBonus,
                                                    names::balance,
                                                    names::allowBonusInCurrency,
                                                    names::usedDiscount,
                                                    names::amount,
                                                    names::usedBonusInCurrency};
    return std::ranges::find(amounts, name) != std::end(amounts);
}

bool isOfAnswer(const QString& name)
{
    return name == names::client || name == names::awards || name == names::informing;
}

/// A text as it may stand in a sentence: short, on one line, and of a card its end only.
QString shown(const QString& name, const QString& text)
{
    constexpr qsizetype longest = 40;
    return name == names::cardNumber ? maskedCard(text) : text.left(longest).simplified();
}

/// Where two card numbers differ of which only the ends are shown.
QString places(const QString& got, const QString& expected)
{
    for (qsizetype i = 0; i < std::min(got.size(), expected.size()); ++i) {
        if (got[i] != expected[i]) {
            return u" (from character %1 on)"_s.arg(i + 1);
        }
    }
    return u" (by its length)"_s;
}

std::vector<Element> childrenOf(const Element& parent)
{
    std::vector<Element> children;
    for (xmlNode* at = xmlFirstElementChild(parent.handle()); at != nullptr;
         at = xmlNextElementSibling(at)) {
        children.emplace_back(at);
    }
    return children;
}

Element childOf(const Element& parent, const QString& name)
{
    const std::vector<Element> children = childrenOf(parent);
    const auto same = std::ranges::find(children, name, &Element::name);
    return same == children.end() ? Element() : *same;
}

/// Collects what differs below two elements.
class Walk
{
public:
    Walk(Comparison& comparison, bool isWhole) : found(comparison), whole(isWhole) {}

    void document(const Element& got, const Element& expected)
    {
        for (const Element& child : childrenOf(got)) {
            field(child, childOf(expected, child.name()), QString());
        }
        for (const Element& child : childrenOf(expected)) {
            if (!childOf(got, child.name())) {
                missing(child, QString());
            }
        }
    }

private:
    /// A field directly below the root.
    void field(const Element& got, const Element& expected, const QString& path)
    {
        if (!whole && isOfAnswer(got.name())) {
            return;
        }
        const size_t before = found.differences.size();
        if (got.name() == names::items && expected) {
            items(got, expected);
            return;
        }
        element(got, expected, path);
        if (found.differences.size() == before) {
            found.agreeing.append(got.name());
        }
    }

    void items(const Element& got, const Element& expected)
    {
        const std::vector<Element> lines = got.all({names::rawItem});
        const std::vector<Element> others = expected.all({names::rawItem});
        found.lines = others.size();
        if (lines.size() != others.size()) {
            otherNumber(lines, others);
            return;
        }
        for (size_t i = 0; i < lines.size(); ++i) {
            const size_t before = found.differences.size();
            below(lines[i], others[i], linePath(i));
            found.agreeingLines += found.differences.size() == before ? 1 : 0;
        }
    }

    static QString linePath(size_t index)
    {
        return u"%1/%2[%3]/"_s.arg(names::items, names::rawItem).arg(index + 1);
    }

    /// Lines that are too many or too few, by their identifiers.
    void otherNumber(const std::vector<Element>& lines, const std::vector<Element>& others)
    {
        const bool isFewer = lines.size() < others.size();
        const std::vector<Element>& more = isFewer ? others : lines;
        const std::vector<Element>& fewer = isFewer ? lines : others;
        size_t at = 0;
        while (at < fewer.size() && idOf(more[at]) == idOf(fewer[at])) {
            ++at;
        }
        found.agreeingLines = at;
        Difference difference;
        difference.path = linePath(at).chopped(1);
        difference.isMissing = isFewer;
        difference.isAdded = !isFewer;
        (isFewer ? difference.expected : difference.got) =
            u"the line with id "_s + shown(names::id, idOf(more[at]));
        found.differences.push_back(difference);
    }

    static QString idOf(const Element& line) { return line.child(names::id).text(); }

    /// All that is below two elements of one name.
    void below(const Element& got, const Element& expected, const QString& path)
    {
        std::vector<Element> others = childrenOf(expected);
        for (const Element& child : childrenOf(got)) {
            const auto same = std::ranges::find_if(
                others, [&child](const Element& other) { return other.name() == child.name(); });
            element(child, same == others.end() ? Element() : *same, path);
            if (same != others.end()) {
                others.erase(same);
            }
        }
        for (const Element& other : others) {
            missing(other, path);
        }
    }

    void element(const Element& got, const Element& expected, const QString& path)
    {
        const QString name = got.name();
        if (!whole && isOfAnswer(name)) {
            return;
        }
        if (!expected) {
            Difference difference;
            difference.path = path + name;
            difference.got = shown(name, got.text());
            difference.isAdded = true;
            found.differences.push_back(difference);
            return;
        }
        if (xmlFirstElementChild(got.handle()) != nullptr) {
            below(got, expected, path + name + u'/');
            return;
        }
        if (got.text() != expected.text()) {
            text(name, got.text(), expected.text(), path + name);
        }
    }

    void text(const QString& name, const QString& got, const QString& expected, const QString& path)
    {
        Difference difference{path, shown(name, got), shown(name, expected), false, false, {}};
        if (difference.got == difference.expected) {
            difference.got += places(got, expected);
        }
        const std::optional<Kopecks> amount = readKopecks(got);
        const std::optional<Kopecks> other = readKopecks(expected);
        if (isMoney(name) && amount && other) {
            difference.tooMuch = *amount - *other;
        }
        found.differences.push_back(difference);
    }

    void missing(const Element& expected, const QString& path)
    {
        if (!whole && isOfAnswer(expected.name())) {
            return;
        }
        Difference difference;
        difference.path = path + expected.name();
        difference.expected = shown(expected.name(), expected.text());
        difference.isMissing = true;
        found.differences.push_back(difference);
    }

    Comparison& found;
    const bool whole;
};

QString kopecks(Kopecks tooMuch)
{
    const Kopecks size = tooMuch < 0 ? -tooMuch : tooMuch;
    return u"%1 %2 %3"_s.arg(size).arg(size == 1 ? u"kopeck"_s : u"kopecks"_s,
                                       tooMuch < 0 ? u"too little"_s : u"too much"_s);
}

QString orNothing(const QString& text)
{
    return text.isEmpty() ? u"empty"_s : text;
}

} // namespace

QString Difference::text() const
{
    if (isMissing) {
        return expected.isEmpty() ? path + u" is missing"_s
                                  : u"%1 is missing: expected %2"_s.arg(path, expected);
    }
    if (isAdded) {
        return got.isEmpty() ? path + u" is not expected"_s
                             : u"%1 is %2: it is not expected"_s.arg(path, got);
    }
    const QString sentence =
        u"%1 is %2: expected %3"_s.arg(path, orNothing(got), orNothing(expected));
    return tooMuch && *tooMuch != 0 ? sentence + u", "_s + kopecks(*tooMuch) : sentence;
}

Comparison compared(const Element& request, const Element& expected, bool isWhole)
{
    Comparison comparison;
    Walk(comparison, isWhole).document(request, expected);
    return comparison;
}

Difference moneyDifference(const QString& path, Kopecks got, Kopecks expected)
{
    return {path, writeKopecks(got), writeKopecks(expected), false, false, got - expected};
}

} // namespace simulator

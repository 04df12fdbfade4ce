// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "protocol/xmldifference.h"

#include "protocol/xmltree.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace protocol {
namespace {

using Element = XmlTree::Element;

QString startTag(const Element& element)
{
    return u'<' + element.name + element.attributes + u'>';
}

/// Blanks alone are layout.
QString meaning(const Element& element)
{
    return element.text.trimmed().isEmpty() ? QString() : element.text;
}

/// The first byte that differs, with what follows it on both sides.
XmlDifference inBytes(const QByteArray& first, const QByteArray& second)
{
    constexpr qsizetype shown = 24;
    const auto [left, right] =
        std::mismatch(first.cbegin(), first.cend(), second.cbegin(), second.cend());
    const qsizetype at = left - first.cbegin();
    XmlDifference difference;
    difference.line = 1 + std::count(first.cbegin(), left, '\n');
    difference.first = QString::fromUtf8(first.mid(at, shown));
    difference.second = QString::fromUtf8(second.mid(at, shown));
    return difference;
}

XmlDifference onlyIn(const XmlTree& tree, qsizetype index, bool isFirst)
{
    const QString tag = startTag(tree.elements().at(index));
    return {tree.path(index), tree.elements().at(index).line, isFirst ? tag : QString(),
            isFirst ? QString() : tag};
}

/// Whether the element at index stands at another place of its tree than the one of the other.
bool isElsewhere(const Element& left, const Element& right)
{
    return left.parent != right.parent || left.name != right.name;
}

} // namespace

std::optional<XmlDifference> XmlDifference::between(const QByteArray& first,
                                                    const QByteArray& second)
{
    if (first == second) {
        return std::nullopt;
    }
    const XmlTree left(first);
    const XmlTree right(second);
    const qsizetype both = std::min(left.elements().size(), right.elements().size());
    for (qsizetype i = 0; i < both; ++i) {
        const Element& one = left.elements().at(i);
        const Element& other = right.elements().at(i);
        if (isElsewhere(one, other)) {
            // the deeper one is what the other document lacks here
            return one.parent >= other.parent
                       ? XmlDifference{left.path(i), one.line, startTag(one), startTag(other)}
                       : onlyIn(right, i, false);
        }
        if (one.attributes != other.attributes) {
            return XmlDifference{left.path(i), one.line, startTag(one), startTag(other)};
        }
        if (meaning(one) != meaning(other)) {
            return XmlDifference{left.path(i), one.line, meaning(one), meaning(other)};
        }
    }
    if (left.elements().size() > both) {
        return onlyIn(left, both, true);
    }
    if (right.elements().size() > both) {
        return onlyIn(right, both, false);
    }
    return inBytes(first, second);
}

} // namespace protocol

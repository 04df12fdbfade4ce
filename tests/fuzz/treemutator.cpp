// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/fuzz/treemutator.h"

#include <QDomDocument>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

/// Texts at the edges of what numbers, names and escapes can be.
const QStringList& texts()
{
    static const QStringList all{
        u""_s,
        u"0"_s,
        u"-0"_s,
        u"1"_s,
        u"-1"_s,
        u"0.005"_s,
        u"0.00499"_s,
        u"-0.005"_s,
        u"0.01"_s,
        u"12.34"_s,
        u"1e308"_s,
        u"-1e308"_s,
        u"1e-320"_s,
        u"nan"_s,
        u"inf"_s,
        u"-inf"_s,
        u"1,5"_s,
        u"1 000"_s,
        u"2147483647"_s,
        u"2147483648"_s,
        u"-2147483649"_s,
        u"9223372036854775808"_s,
        u"0x10"_s,
        u" 5 "_s,
        u"5."_s,
        u".5"_s,
        u"+5"_s,
        u"pos"_s,
        u"check"_s,
        u"POS"_s,
        u"]]>"_s,
        u"&<>\"'"_s,
        u"%1 %2"_s,
        u"Анна"_s,
        u"\U0001F642"_s,
        u"\u00A0"_s,
        u"1\n2"_s,
        u"piece"_s,
        u"weight"_s,
    };
    return all;
}

template <typename List>
auto oneOf(const List& list, std::mt19937& random)
{
    return list.at(qsizetype(random() % std::mt19937::result_type(list.size())));
}

QList<QDomElement> elementsOf(const QDomDocument& document)
{
    QList<QDomElement> found;
    QList<QDomElement> open{document.documentElement()};
    constexpr qsizetype enough = 4000;
    while (!open.isEmpty() && found.size() < enough) {
        const QDomElement element = open.takeLast();
        if (element.isNull()) {
            continue;
        }
        found.append(element);
        for (QDomElement child = element.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            open.append(child);
        }
    }
    return found;
}

} // namespace

void TreeMutator::retext(QDomDocument& document, QDomElement& element, Random& random) const
{
    while (element.hasChildNodes()) {
        element.removeChild(element.firstChild());
    }
    const QString text = oneOf(texts(), random);
    if (random() % 8 == 0) {
        element.appendChild(document.createCDATASection(QString(text).remove(u"]]>"_s)));
    } else {
        element.appendChild(document.createTextNode(text));
    }
}

void TreeMutator::add(QDomDocument& document, QDomElement& parent, Random& random) const
{
    QDomElement child = document.createElement(oneOf(names, random));
    child.appendChild(document.createTextNode(oneOf(texts(), random)));
    if (random() % 2 == 0) {
        parent.insertBefore(child, parent.firstChild());
    } else {
        parent.appendChild(child);
    }
}

void TreeMutator::nest(QDomDocument& document, QDomElement& element, Random& random) const
{
    QDomElement outer =
        document.createElement(random() % 2 == 0 ? element.tagName() : oneOf(names, random));
    element.parentNode().replaceChild(outer, element);
    outer.appendChild(element);
}

void TreeMutator::changeElement(QDomDocument& document, QDomElement element, Random& random) const
{
    QDomNode parent = element.parentNode();
    const bool isRoot = parent.isDocument();
    switch (random() % 9) {
    case 0:
        if (!isRoot) {
            parent.removeChild(element);
        }
        return;
    case 1:
        if (!isRoot) {
            for (auto copies = random() % 4 + 1; copies > 0; --copies) {
                parent.insertAfter(element.cloneNode(), element);
            }
        }
        return;
    case 2:
        element.setTagName(oneOf(names, random));
        return;
    case 3:
        nest(document, element, random);
        return;
    case 4:
        element.setAttribute(oneOf(names, random), oneOf(texts(), random));
        return;
    case 5:
        parent.insertBefore(document.createComment(u" "_s + oneOf(names, random)), element);
        return;
    case 6:
        add(document, element, random);
        return;
    default:
        retext(document, element, random);
    }
}

void TreeMutator::step(QDomDocument& document, Random& random) const
{
    const QList<QDomElement> elements = elementsOf(document);
    const QDomElement element = oneOf(elements, random);
    if (random() % 10 == 0) { // a piece of the tree moves elsewhere
        QDomElement place = oneOf(elements, random);
        place.appendChild(element.cloneNode());
        return;
    }
    changeElement(document, element, random);
}

size_t TreeMutator::mutate(std::uint8_t* data, size_t size, size_t maximum, unsigned seed)
{
    Random random(seed);
    QDomDocument document;
    const QByteArray before(reinterpret_cast<const char*>(data), qsizetype(size));
    if (!document.setContent(before) || document.documentElement().isNull()) {
        document = QDomDocument();
        document.appendChild(document.createElement(names.first()));
    }
    for (auto steps = random() % 4 + 1; steps > 0; --steps) {
        step(document, random);
    }
    const QByteArray after = document.toByteArray(random() % 2 == 0 ? 1 : -1);
    if (size_t(after.size()) > maximum) {
        return 0;
    }
    std::memcpy(data, after.constData(), size_t(after.size()));
    return size_t(after.size());
}

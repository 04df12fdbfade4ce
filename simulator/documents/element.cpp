// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/element.h"

#include <libxml/dict.h>
#include <string_view>

namespace simulator {
namespace {

const xmlChar* chars(const QByteArray& text)
{
    return reinterpret_cast<const xmlChar*>(text.constData());
}

QByteArray bytes(QLatin1StringView name)
{
    return {name.data(), name.size()};
}

QString fromXml(const xmlChar* text)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(text));
}

xmlDoc* copyOf(const Element& root)
{
    xmlDoc* const copy = xmlNewDoc(nullptr);
    // the names are in the first one's dictionary, which both own then
    if (xmlDict* const dictionary = root.handle()->doc->dict; dictionary != nullptr) {
        xmlDictReference(dictionary);
        copy->dict = dictionary;
    }
    xmlDocSetRootElement(copy, xmlDocCopyNode(root.handle(), copy, 1));
    return copy;
}

} // namespace

bool Element::isCalled(QLatin1StringView expected) const
{
    return std::string_view(reinterpret_cast<const char*>(node->name)) ==
           std::string_view(expected.data(), static_cast<size_t>(expected.size()));
}

QString Element::name() const
{
    return fromXml(node->name);
}

QString Element::text() const
{
    const xmlNode* const inside = node == nullptr ? nullptr : node->children;
    return inside != nullptr && inside->type == XML_TEXT_NODE ? fromXml(inside->content)
                                                              : QString();
}

QString Element::dropped() const
{
    return QString::fromLatin1(static_cast<const char*>(node->_private));
}

Element Element::child(QLatin1StringView childName) const
{
    for (xmlNode* at = xmlFirstElementChild(node); at != nullptr; at = xmlNextElementSibling(at)) {
        if (Element(at).isCalled(childName)) {
            return Element(at);
        }
    }
    return {};
}

std::vector<Element> Element::all(std::initializer_list<QLatin1StringView> path) const
{
    std::vector<Element> level{*this};
    for (const QLatin1StringView step : path) {
        std::vector<Element> next;
        for (const Element& parent : level) {
            for (xmlNode* at = xmlFirstElementChild(parent.node); at != nullptr;
                 at = xmlNextElementSibling(at)) {
                if (Element(at).isCalled(step)) {
                    next.emplace_back(at);
                }
            }
        }
        level = std::move(next);
    }
    return level;
}

Element Element::append(QLatin1StringView childName, const QString& childText)
{
    const QByteArray content = childText.toUtf8();
    return Element(xmlNewTextChild(node, nullptr, chars(bytes(childName)),
                                   content.isEmpty() ? nullptr : chars(content)));
}

void Element::remove(QLatin1StringView childName)
{
    xmlNode* next = nullptr;
    for (xmlNode* at = xmlFirstElementChild(node); at != nullptr; at = next) {
        next = xmlNextElementSibling(at);
        if (Element(at).isCalled(childName)) {
            xmlUnlinkNode(at);
            xmlFreeNode(at);
        }
    }
}

Document::Document(QLatin1StringView rootName) : document(xmlNewDoc(nullptr))
{
    xmlDocSetRootElement(document.get(),
                         xmlNewDocNode(document.get(), nullptr, chars(bytes(rootName)), nullptr));
}

Document::Document(const Element& root) : document(copyOf(root)) {}

Element Document::root() const
{
    return Element(xmlDocGetRootElement(document.get()));
}

} // namespace simulator

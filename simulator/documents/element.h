// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <initializer_list>
#include <libxml/tree.h>
#include <memory>
#include <vector>

namespace simulator {

/// An XML element as this wire format uses it: text or children, and no attributes. Only points at
/// what a Document owns: as long as that is there it may be copied, and changed through every copy.
class Element
{
public:
    Element() = default; ///< none
    explicit Element(xmlNode* element) : node(element) {}

    explicit operator bool() const { return node != nullptr; }

    [[nodiscard]] QString name() const;
    /// Empty where there are children, or no element at all.
    [[nodiscard]] QString text() const;
    /// What was read and is not kept, as "an attribute"; empty for nothing.
    [[nodiscard]] QString dropped() const;

    /// The first child of that name, or none.
    [[nodiscard]] Element child(QLatin1StringView childName) const;

    /// All elements at a path of names below this one, in document order.
    [[nodiscard]] std::vector<Element> all(std::initializer_list<QLatin1StringView> path) const;

    /// Appends a child and returns it.
    Element append(QLatin1StringView childName, const QString& childText = {});

    /// Removes all children of that name.
    void remove(QLatin1StringView childName);

    /// libxml2's own, for those who read, write and check whole documents.
    [[nodiscard]] xmlNode* handle() const { return node; }

private:
    [[nodiscard]] bool isCalled(QLatin1StringView expected) const;

    xmlNode* node = nullptr;
};

/// An XML document; its elements live as long as it.
class Document
{
public:
    /// Takes what libxml2 has made, and owns it from now on; without a root, or null, it may only
    /// be destroyed.
    explicit Document(xmlDoc* made) : document(made) {}
    /// With an empty root.
    explicit Document(QLatin1StringView rootName);
    /// With a copy of an element and all that is in it.
    explicit Document(const Element& root);

    [[nodiscard]] Element root() const;
    [[nodiscard]] xmlDoc* handle() const { return document.get(); }

private:
    struct Free
    {
        void operator()(xmlDoc* freed) const { xmlFreeDoc(freed); }
    };

    std::unique_ptr<xmlDoc, Free> document;
};

} // namespace simulator

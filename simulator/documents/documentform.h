// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"

#include <QStringList>

#include <libxml/xmlschemas.h>
#include <optional>

namespace simulator {

/// What a document must look like, by one of the schemas in protocol/schema. libxml2 judges; what
/// it objects to is said in words that a till's developer can follow. May be used by several
/// threads at once.
class DocumentForm
{
public:
    /// name: of the schema without its ending, as in "sale-request"; it is built into the program.
    /// Throws std::runtime_error when there is none or it is no schema.
    explicit DocumentForm(const QString& name);

    /// The first thing in which a document differs from the form, as one sentence that begins with
    /// the path of the element in question; nothing when it fits. Two lines with the same id fit:
    /// that is no matter of the form.
    [[nodiscard]] std::optional<QString> objectionTo(const Element& root) const;

    /// The same of everything in which it differs, in the order of the document: at most that many
    /// sentences. What stands in an element that is unknown is not looked at.
    [[nodiscard]] QStringList objectionsTo(const Element& root, qsizetype most) const;

private:
    struct Free
    {
        void operator()(xmlSchema* freed) const { xmlSchemaFree(freed); }
    };

    /// An element with what the schema says of it; both begin with the root's.
    struct Place
    {
        Element element;
        Element declaration; ///< none where it is unknown
        QString path;        ///< with "/" behind it, empty for the root
    };

    [[nodiscard]] std::vector<Place> wayTo(xmlNode* node) const;
    [[nodiscard]] Place placeIn(const Place& around, xmlNode* node, int number) const;
    [[nodiscard]] Element typeOf(const Element& declaration) const;
    [[nodiscard]] QStringList objectionsAt(const Place& place, qsizetype most) const;
    [[nodiscard]] bool isTextOf(const Element& element, const Element& declaration) const;
    void collect(const Place& place, qsizetype most, QStringList& objections) const;

    const Document source;
    std::unique_ptr<xmlSchema, Free> schema; // refers to source
};

} // namespace simulator

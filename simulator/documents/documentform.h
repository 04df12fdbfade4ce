// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/element.h"

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
    [[nodiscard]] Element typeOf(const Element& declaration) const;
    [[nodiscard]] std::optional<QString> objectionAt(const Place& place) const;

    const Document source;
    std::unique_ptr<xmlSchema, Free> schema; // refers to source
};

} // namespace simulator

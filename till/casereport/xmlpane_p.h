// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/casereport/reportpage_p.h"

#include <QHash>
#include <QList>

namespace till {

/// What points at an element of a shown document: from where on the page, and in which words.
struct PointedFrom
{
    QString id;
    QString words;
};

/// A document of the wire on the page: a line for each element, indented by its depth.
class XmlPane
{
public:
    /// @param shownAs begins the identifiers of its elements, such as "answer-2"
    XmlPane(const QByteArray& document, const QString& shownAs);

    /// Where an element stands on the page; empty where the document has no such element.
    QString idOf(const QString& path) const;
    /// Has the element lead back.
    void pointedFrom(const QString& path, const PointedFrom& where);
    void write(ReportPage& page) const;

private:
    QByteArray content;
    QString prefix;
    QHash<QString, qsizetype> indexes;
    QHash<qsizetype, QList<PointedFrom>> back;
};

} // namespace till

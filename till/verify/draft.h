// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/verify/reading.h"

#include <QDomDocument>

namespace till::verify {

/// A document of the plug-in's, to be changed before it is sent: as another till would write it, or
/// as none may.
class Draft
{
public:
    explicit Draft(const QByteArray& document);

    /// Below the root; an element that is missing is added.
    Draft& set(const Names& names, const QString& text);
    /// In the line with that number, from 0.
    Draft& setInLine(int line, const Names& names, const QString& text);
    Draft& removeFromLine(int line, const Names& names);
    /// Another line like the last one, with that identifier.
    Draft& addLine(int id);
    /// As many lines as that, numbered from 1, and the check's total.
    Draft& makeLines(int count);
    /// A new identifier for the check.
    Draft& makeNew();

    QString text(const Names& names) const;
    QString textInLine(int line, const Names& names) const;
    qint64 kopecksInLine(int line, const Names& names) const;
    int lineCount() const;
    QByteArray bytes() const { return document.toByteArray(1); }

private:
    QDomElement lineAt(int line) const;
    static QDomElement reached(QDomElement from, const Names& names);
    /// Sets the text of what the way leads to from there; what is missing on it is added.
    void setReached(QDomElement from, const Names& way, const QString& text);
    void setText(QDomElement element, const QString& text);

    QDomDocument document;
};

} // namespace till::verify

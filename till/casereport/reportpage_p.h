// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QXmlStreamWriter>

#include <functional>

namespace till {

/// Writes one HTML page, which is well-formed XML too. Whatever is written as text is masked, made
/// printable and escaped here; names of elements, attributes and their values are the caller's own
/// words, never a document's.
class ReportPage
{
public:
    using Mask = std::function<QString(const QString&)>;

    /// By which a page is known again; it stands in the head.
    static constexpr char generator[] = "orva-till log export";

    /// Begins the page.
    /// @param mask takes from a text what tells who somebody is; empty: texts stay whole
    /// @param language of the page's own words, such as "ru"
    ReportPage(const QString& title, const Mask& mask, const QString& language);

    /// An element that is closed when this object ends.
    class Element
    {
    public:
        Element(ReportPage& owner, const QString& name, const QString& className = QString());
        ~Element();
        Element(const Element&) = delete;
        Element& operator=(const Element&) = delete;

    private:
        ReportPage& page;
    };

    /// An attribute of the element just begun; before its text.
    void attribute(const QString& name, const QString& value);
    /// In one line; blanks stay.
    void text(const QString& text);
    /// Line breaks and blanks stay.
    void lines(const QString& text);
    /// An element with nothing but a text.
    void element(const QString& name, const QString& words, const QString& className = QString());
    /// A link within the page.
    void link(const QString& id, const QString& text);
    /// A row of cells; columns from `numbersFrom` on hold numbers.
    void row(const QString& cell, const QStringList& cells, qsizetype numbersFrom = 1000);

    /// Ends the page.
    QByteArray finish();

private:
    QByteArray content;
    QXmlStreamWriter writer{&content};
    Mask masked;
};

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/casereport/reportpage_p.h"

#include "console/printable.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Stands where the style goes: a style's text is not escaped as other texts are.
constexpr QByteArrayView styleMark = "/*style*/";

QByteArray style()
{
    QFile file(u":/orva/casereport/casereport.css"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// XML has no place for these: halves of a pair of surrogates, U+FFFE and U+FFFF.
QString writable(const QString& text)
{
    QString result = text;
    for (qsizetype i = 0; i < result.size(); ++i) {
        const QChar character = result.at(i);
        const QChar next = i + 1 < result.size() ? result.at(i + 1) : QChar();
        if (character.isHighSurrogate() && next.isLowSurrogate()) {
            ++i;
        } else if (character.isSurrogate() || character.unicode() >= 0xfffe) {
            result[i] = QChar::ReplacementCharacter;
        }
    }
    return result;
}

} // namespace

ReportPage::Element::Element(ReportPage& owner, const QString& name, const QString& className)
    : page(owner)
{
    page.writer.writeStartElement(name);
    if (!className.isEmpty()) {
        page.writer.writeAttribute(u"class"_s, className);
    }
}

ReportPage::Element::~Element()
{
    page.writer.writeCharacters(QString()); // a reader of HTML knows no empty elements
    page.writer.writeEndElement();
}

ReportPage::ReportPage(const QString& title, const Mask& mask, const QString& language)
    : masked(mask ? mask : [](const QString& text) { return text; })
{
    writer.writeDTD(u"<!DOCTYPE html>"_s);
    writer.writeStartElement(u"html"_s);
    writer.writeAttribute(u"lang"_s, language);
    writer.writeStartElement(u"head"_s);
    writer.writeEmptyElement(u"meta"_s);
    writer.writeAttribute(u"charset"_s, u"utf-8"_s);
    writer.writeEmptyElement(u"meta"_s);
    writer.writeAttribute(u"name"_s, u"viewport"_s);
    writer.writeAttribute(u"content"_s, u"width=device-width, initial-scale=1"_s);
    writer.writeEmptyElement(u"meta"_s);
    writer.writeAttribute(u"name"_s, u"generator"_s);
    writer.writeAttribute(u"content"_s, QLatin1StringView(generator));
    // nothing is loaded and nothing runs, whatever a document of the case holds
    writer.writeEmptyElement(u"meta"_s);
    writer.writeAttribute(u"http-equiv"_s, u"Content-Security-Policy"_s);
    writer.writeAttribute(u"content"_s, u"default-src 'none'; style-src 'unsafe-inline'"_s);
    writer.writeTextElement(u"style"_s, QString::fromLatin1(styleMark)); // no other text before it
    element(u"title"_s, title);
    writer.writeEndElement();
    writer.writeStartElement(u"body"_s);
    writer.writeStartElement(u"main"_s);
    element(u"h1"_s, title);
}

void ReportPage::attribute(const QString& name, const QString& value)
{
    writer.writeAttribute(name, value);
}

void ReportPage::text(const QString& text)
{
    writer.writeCharacters(writable(console::printable::line(masked(text))));
}

void ReportPage::lines(const QString& text)
{
    writer.writeCharacters(writable(console::printable::lines(masked(text))));
}

void ReportPage::element(const QString& name, const QString& words, const QString& className)
{
    const Element inner(*this, name, className);
    text(words);
}

void ReportPage::link(const QString& id, const QString& words)
{
    const Element anchor(*this, u"a"_s);
    attribute(u"href"_s, u'#' + id);
    text(words);
}

void ReportPage::row(const QString& cell, const QStringList& cells, qsizetype numbersFrom)
{
    const Element row(*this, u"tr"_s);
    for (qsizetype i = 0; i < cells.size(); ++i) {
        element(cell, cells.at(i), i >= numbersFrom ? u"number"_s : QString());
    }
}

QByteArray ReportPage::finish()
{
    writer.writeEndDocument();
    const qsizetype mark = content.indexOf(styleMark);
    return content.first(mark) + style() + content.sliced(mark + styleMark.size());
}

} // namespace till

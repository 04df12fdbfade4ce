// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/xmlreader.h"

#include "simulator/documents/rejection.h"
#include "simulator/documents/xmlguard.h"

#include <QStringDecoder>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

QString decode(const QByteArray& body)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(body);
    if (decoder.hasError()) {
        throw Rejection(400, u"The body is not UTF-8"_s);
    }
    if (text.trimmed().isEmpty()) {
        throw Rejection(400, u"The body is empty: a RawCheck document is expected"_s);
    }
    return text;
}

/// Other servers take a declaration at its word and read something else than was meant.
void requireUtf8(QStringView declared)
{
    if (!declared.isEmpty() && declared.compare(u"UTF-8"_s, Qt::CaseInsensitive) != 0) {
        throw Rejection(400, u"The declaration names the encoding %1; UTF-8 is expected"_s.arg(
                                 declared.left(40).toString().simplified()));
    }
}

/// Reads what is below the element whose start tag was read last. The depth is limited by the
/// guard, so the recursion is too.
Element readElement(QXmlStreamReader& reader)
{
    Element element(reader.qualifiedName().toString());
    if (!reader.attributes().isEmpty()) {
        element.dropped = u"an attribute"_s;
    }
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            element.children.push_back(readElement(reader));
            break;
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::EntityReference:
            element.text += reader.text();
            break;
        case QXmlStreamReader::EndElement:
            if (QStringView(element.text).trimmed().isEmpty()) {
                element.text.clear();
            } else if (!element.children.empty()) {
                element.dropped = u"text beside its elements"_s;
                element.text.clear();
            }
            return element;
        default:
            break;
        }
    }
    return element;
}

} // namespace

Element readXml(const QByteArray& body)
{
    const QString text = decode(body);
    if (const std::optional<QString> objection = xmlObjection(text)) {
        throw Rejection(400, *objection);
    }
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    Element root;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartDocument) {
            requireUtf8(reader.documentEncoding());
        } else if (token == QXmlStreamReader::StartElement) {
            root = readElement(reader);
        }
    }
    if (reader.hasError()) {
        throw Rejection(
            400, u"The XML is not well-formed at line %1, column %2: %3"_s.arg(reader.lineNumber())
                     .arg(reader.columnNumber())
                     .arg(reader.errorString().simplified()));
    }
    return root;
}

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/xmlreader.h"

#include "simulator/documents/rejection.h"
#include "simulator/documents/xmlguard.h"

#include <QRegularExpression>
#include <QStringDecoder>

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr char anAttribute[] = "an attribute";
constexpr char textBeside[] = "text beside its elements";

/// Other servers take a declaration at its word and read something else than was meant.
void requireUtf8(const QString& text)
{
    static const QRegularExpression declaration(
        u"^<\\?xml\\s[^>]*?\\bencoding\\s*=\\s*(['\"])(.*?)\\1"_s);
    const QString declared = declaration.match(text.left(1000)).captured(2);
    if (!declared.isEmpty() && declared.compare(u"UTF-8"_s, Qt::CaseInsensitive) != 0) {
        throw Rejection(400, u"The declaration names the encoding %1; UTF-8 is expected"_s.arg(
                                 declared.left(40).simplified()));
    }
}

/// Looks at what must hold before the body is given to the parser.
void requireReadable(const QByteArray& body)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(body);
    if (decoder.hasError()) {
        throw Rejection(400, u"The body is not UTF-8"_s);
    }
    if (text.trimmed().isEmpty()) {
        throw Rejection(400, u"The body is empty: a RawCheck document is expected"_s);
    }
    if (const std::optional<QString> objection = xmlObjection(text)) {
        throw Rejection(400, *objection);
    }
    requireUtf8(text);
}

/// What the parser says, or what people say to it where that is plainer.
QString reasonFor(const xmlParserCtxt& parser, const xmlError& error)
{
    if (error.code == XML_ERR_NO_MEMORY || error.code == XML_ERR_INTERNAL_ERROR) {
        return u"A piece of text is longer than 10,000,000 bytes."_s; // the parser's own limit
    }
    if (parser.input == nullptr || parser.input->cur >= parser.input->end) {
        return u"Premature end of document."_s;
    }
    constexpr qsizetype longest = 200;
    return QString::fromUtf8(error.message).simplified().left(longest);
}

/// Keeps the first thing for which the parser cannot go on, and ends it there.
void takeProblem(void* context, const xmlError& error)
{
    auto* const parser = static_cast<xmlParserCtxt*>(context);
    auto* const problem = static_cast<QString*>(parser->_private);
    if (error.level < XML_ERR_FATAL || !problem->isEmpty()) {
        return;
    }
    *problem = u"The XML is not well-formed at line %1, column %2: %3"_s.arg(error.line)
                   .arg(error.int2 - 1)
                   .arg(reasonFor(*parser, error));
    xmlStopParser(parser);
}

/// Notes what an element loses, and with the document the first element that does.
void markDropped(xmlNode* element, const char* what)
{
    element->_private = const_cast<char*>(what);
    if (element->doc->_private == nullptr) {
        element->doc->_private = element;
    }
}

/// Takes the text away that was read last, if it was one: there are elements beside it.
void dropText(xmlNode* parent)
{
    xmlNode* const text = parent->last;
    if (text == nullptr || text->type != XML_TEXT_NODE) {
        return;
    }
    if (xmlIsBlankNode(text) == 0) {
        markDropped(parent, textBeside);
    }
    xmlUnlinkNode(text);
    xmlFreeNode(text);
}

/// Keeps the name as it is written and nothing else.
void startElement(void* context, const xmlChar* localName, const xmlChar* prefix,
                  const xmlChar* /*uri*/, int namespaces, const xmlChar** /*declared*/,
                  int attributes, int /*defaulted*/, const xmlChar** /*values*/)
{
    auto* const parser = static_cast<xmlParserCtxt*>(context);
    if (xmlDictSize(parser->dict) > maximumNames) {
        *static_cast<QString*>(parser->_private) =
            u"The XML has more than %1 different names"_s.arg(maximumNames);
        xmlStopParser(parser);
        return;
    }
    if (parser->node != nullptr) {
        dropText(parser->node);
    }
    const xmlChar* const name =
        prefix == nullptr ? localName : xmlDictQLookup(parser->dict, prefix, localName);
    xmlSAX2StartElementNs(context, name, nullptr, nullptr, 0, nullptr, 0, 0, nullptr);
    if (parser->node != nullptr && namespaces + attributes > 0) {
        markDropped(parser->node, anAttribute);
    }
}

/// A text that consists of blanks only is none.
void endElement(void* context, const xmlChar* localName, const xmlChar* prefix, const xmlChar* uri)
{
    xmlNode* const node = static_cast<xmlParserCtxt*>(context)->node;
    if (node->last != node->children || xmlIsBlankNode(node->last) != 0) {
        dropText(node);
    }
    xmlSAX2EndElementNs(context, localName, prefix, uri);
}

} // namespace

Document readXml(const QByteArray& body)
{
    requireReadable(body);
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser(xmlNewParserCtxt(),
                                                                              &xmlFreeParserCtxt);
    QString problem;
    parser->_private = &problem;
    // what is not kept never becomes part of a tree: comments alone could fill the memory
    xmlSAXHandler& handler = *parser->sax;
    handler.startElementNs = startElement;
    handler.endElementNs = endElement;
    handler.cdataBlock = xmlSAX2Characters;
    handler.comment = nullptr;
    handler.processingInstruction = nullptr;
    // const or not: that depends on the version
    handler.serror = [](void* context, auto* error) { takeProblem(context, *error); };
    Document document(xmlCtxtReadMemory(parser.get(), body.constData(),
                                        static_cast<int>(body.size()), nullptr, "UTF-8",
                                        XML_PARSE_NONET | XML_PARSE_COMPACT));
    if (!problem.isEmpty() || document.handle() == nullptr) {
        throw Rejection(400, problem.isEmpty() ? u"The XML cannot be read"_s : problem);
    }
    return document;
}

} // namespace simulator

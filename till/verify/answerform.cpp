// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/answerform.h"

#include "protocol/xmltree.h"

#include <QDomDocument>
#include <QFile>

#include <libxml/xmlschemas.h>
#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace till::verify::answerform {
namespace {

QDomDocument readSchema(const QString& name)
{
    QFile file(u":/verify/schema/%1"_s.arg(name));
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(file.readAll())) {
        throw std::runtime_error("no schema " + name.toStdString());
    }
    return document;
}

/// The text of a schema with what it includes in it, so that nothing is looked for on the disk.
QByteArray wholeSchema(const QString& name)
{
    QDomDocument schema = readSchema(name + u".xsd"_s);
    QDomElement root = schema.documentElement();
    while (true) {
        const QDomElement include = root.firstChildElement(u"xs:include"_s);
        if (include.isNull()) {
            return schema.toByteArray();
        }
        const QDomDocument included = readSchema(include.attribute(u"schemaLocation"_s));
        for (QDomNode node = included.documentElement().firstChild(); !node.isNull();
             node = node.nextSibling()) {
            root.appendChild(schema.importNode(node, true));
        }
        root.removeChild(include);
    }
}

struct Freeing
{
    void operator()(xmlSchema* schema) const { xmlSchemaFree(schema); }
    void operator()(xmlSchemaParserCtxt* parser) const { xmlSchemaFreeParserCtxt(parser); }
    void operator()(xmlSchemaValidCtxt* judge) const { xmlSchemaFreeValidCtxt(judge); }
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

/// Const or not: that depends on libxml2's version.
constexpr auto takeFirst = [](void* context, auto* error) {
    auto* const found = static_cast<FormObjection*>(context);
    if (found->text.isEmpty()) {
        auto* const path = xmlGetNodePath(static_cast<xmlNode*>(error->node));
        *found = {QString::fromUtf8(reinterpret_cast<const char*>(path)),
                  QString::fromUtf8(error->message).simplified()};
        xmlFree(path);
    }
};

} // namespace

std::optional<FormObjection> objectionTo(const QString& name, const QByteArray& document)
{
    const std::unique_ptr<xmlDoc, Freeing> read(
        xmlReadMemory(document.constData(), int(document.size()), nullptr, nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (!read) {
        return FormObjection{{}, protocol::XmlTree(document).problem()};
    }
    const QByteArray text = wholeSchema(name);
    const std::unique_ptr<xmlSchemaParserCtxt, Freeing> parser(
        xmlSchemaNewMemParserCtxt(text.constData(), int(text.size())));
    const std::unique_ptr<xmlSchema, Freeing> schema(xmlSchemaParse(parser.get()));
    if (!schema) {
        throw std::runtime_error("schema " + name.toStdString() + " cannot be read");
    }
    const std::unique_ptr<xmlSchemaValidCtxt, Freeing> judge(xmlSchemaNewValidCtxt(schema.get()));
    FormObjection found;
    xmlSchemaSetValidStructuredErrors(judge.get(), takeFirst, &found);
    if (xmlSchemaValidateDoc(judge.get(), read.get()) == 0) {
        return std::nullopt;
    }
    return found;
}

} // namespace till::verify::answerform

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/documentform.h"

#include <QFile>
#include <QHash>

#include <algorithm>
#include <libxml/parser.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

QString attributeOf(const Element& element, const char* name)
{
    const auto free = [](xmlChar* text) { xmlFree(text); };
    const std::unique_ptr<xmlChar, decltype(free)> value(
        xmlGetNoNsProp(element.handle(), reinterpret_cast<const xmlChar*>(name)), free);
    return QString::fromUtf8(reinterpret_cast<const char*>(value.get()));
}

QString nameOf(const Element& declaration)
{
    return attributeOf(declaration, "name");
}

Document readSchema(const QString& name)
{
    QFile file(u":/protocol/schema/%1.xsd"_s.arg(name));
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    xmlDoc* const read = xmlReadMemory(text.constData(), static_cast<int>(text.size()), nullptr,
                                       nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR);
    if (read == nullptr) {
        throw std::runtime_error("no schema " + name.toStdString());
    }
    return Document(read);
}

/// Puts the elements of a group where the group is named, below the node, for the sentences here
/// are made from lists of elements.
void resolveGroups(xmlNode* node, const Element& definitions)
{
    xmlNode* next = nullptr;
    for (xmlNode* at = xmlFirstElementChild(node); at != nullptr; at = next) {
        next = xmlNextElementSibling(at);
        const Element element(at);
        if (element.name() != "group"_L1) {
            resolveGroups(at, definitions);
            continue;
        }
        for (const Element& group : definitions.all({"group"_L1})) {
            if (nameOf(group) != attributeOf(element, "ref")) {
                continue;
            }
            for (const Element& row : group.child("sequence"_L1).all({"element"_L1})) {
                xmlAddPrevSibling(at, xmlDocCopyNode(row.handle(), at->doc, 1));
            }
        }
        xmlUnlinkNode(at);
        xmlFreeNode(at);
    }
}

/// Declares an element of its own for each type of texts, called as the type is: by these a text is
/// judged apart from the document that it stands in.
void declareTexts(const Element& definitions)
{
    xmlNode* const model = definitions.child("element"_L1).handle();
    for (const Element& type : definitions.all({"simpleType"_L1})) {
        constexpr int attributesAlone = 2;
        xmlNode* const declaration = xmlDocCopyNode(model, model->doc, attributesAlone);
        const QByteArray name = nameOf(type).toUtf8();
        for (const char* attribute : {"name", "type"}) {
            xmlSetProp(declaration, reinterpret_cast<const xmlChar*>(attribute),
                       reinterpret_cast<const xmlChar*>(name.constData()));
        }
        xmlAddChild(definitions.handle(), declaration);
    }
}

/// A schema with what it includes, so that nothing is looked for on the disk.
Document wholeSchema(const QString& name)
{
    Document schema = readSchema(name);
    for (const Element& include : schema.root().all({"include"_L1})) {
        const Document included =
            readSchema(attributeOf(include, "schemaLocation").section(u'.', 0, 0));
        for (const QLatin1StringView kind : {"simpleType"_L1, "complexType"_L1}) {
            for (const Element& type : included.root().all({kind})) {
                xmlAddChild(schema.root().handle(),
                            xmlDocCopyNode(type.handle(), schema.handle(), 1));
            }
        }
        resolveGroups(schema.root().handle(), included.root());
    }
    schema.root().remove("include"_L1);
    // libxml2 compares each line's id with each other's; two equal ones are found elsewhere
    schema.root().child("element"_L1).remove("unique"_L1);
    declareTexts(schema.root());
    return schema;
}

/// The list of the elements that a type may have, none where it is a text.
Element listIn(const Element& type)
{
    for (const QLatin1StringView kind : {"sequence"_L1, "all"_L1, "choice"_L1}) {
        if (const Element list = type.child(kind)) {
            return list;
        }
    }
    return {};
}

bool isChoice(const Element& list)
{
    return list.name() == "choice"_L1;
}

Element rowOf(const Element& list, const QString& name)
{
    for (const Element& row : list.all({"element"_L1})) {
        if (nameOf(row) == name) {
            return row;
        }
    }
    return {};
}

bool isRepeated(const Element& list, const Element& row)
{
    return row && (attributeOf(row, "maxOccurs") == "unbounded"_L1 ||
                   attributeOf(list, "maxOccurs") == "unbounded"_L1);
}

QString namesIn(const Element& list)
{
    QStringList names;
    for (const Element& row : list.all({"element"_L1})) {
        names.append(nameOf(row));
    }
    return names.join(u", "_s);
}

/// The path as it stands at the beginning of a sentence.
QString subject(const Element& element, const QString& path)
{
    return path.isEmpty() ? element.name() : path.chopped(1);
}

/// What is wrong with which elements there are and how many of them.
QStringList countObjections(const Element& element, const Element& list, const QString& path,
                            qsizetype most)
{
    QStringList objections;
    QHash<QString, int> counts;
    for (xmlNode* at = xmlFirstElementChild(element.handle());
         at != nullptr && objections.size() < most; at = xmlNextElementSibling(at)) {
        const QString name = Element(at).name();
        if (!counts.contains(name) && !rowOf(list, name)) {
            objections.append(
                u"%1%2 is unknown here: known are %3"_s.arg(path, name.left(40), namesIn(list)));
        }
        ++counts[name];
    }
    for (const Element& row : list.all({"element"_L1})) {
        const int count = counts.value(nameOf(row));
        if (count == 0 && !isChoice(list) && attributeOf(row, "minOccurs") != "0"_L1) {
            objections.append(u"%1%2 is missing"_s.arg(path, nameOf(row)));
        }
        if (count > 1 && !isRepeated(list, row)) {
            objections.append(
                u"%1%2 is there %3 times: expected once"_s.arg(path, nameOf(row)).arg(count));
        }
    }
    if (counts.isEmpty() && isChoice(list)) {
        objections.append(u"%1 is empty: expected %2"_s.arg(subject(element, path), namesIn(list)));
    }
    return objections.first(std::min(most, objections.size()));
}

/// What is wrong with the order of elements whose names and numbers are right.
std::optional<QString> orderObjection(const Element& element, const Element& list,
                                      const QString& path)
{
    const QStringList order = namesIn(list).split(u", "_s);
    qsizetype reached = 0;
    for (xmlNode* at = xmlFirstElementChild(element.handle()); at != nullptr;
         at = xmlNextElementSibling(at)) {
        const qsizetype number = order.indexOf(Element(at).name());
        if (number < reached && list.name() == "sequence"_L1) {
            return u"%1%2 stands behind %3: expected in the order %4"_s.arg(
                path, order.at(number), order.at(reached), order.join(u", "_s));
        }
        reached = number;
    }
    return std::nullopt;
}

QString textObjection(const Element& element, const Element& type, const QString& path)
{
    if (const Element inside = Element(xmlFirstElementChild(element.handle()))) {
        return u"%1 must hold text: it has the element %2"_s.arg(subject(element, path),
                                                                 inside.name().left(40));
    }
    const QString text = element.text();
    const QString shown = text.size() > 40 ? text.left(40) + u"..."_s : text;
    return u"%1 is \"%2\": expected %3"_s.arg(
        subject(element, path), shown.simplified(),
        type.child("annotation"_L1).child("appinfo"_L1).text());
}

/// The first thing that libxml2 objects to.
struct Finding
{
    xmlNode* node = nullptr;
    QString said;
};

/// Const or not: that depends on libxml2's version.
constexpr auto takeFinding = [](void* context, auto* error) {
    auto* const finding = static_cast<Finding*>(context);
    if (finding->said.isEmpty()) {
        *finding = {static_cast<xmlNode*>(error->node),
                    QString::fromUtf8(error->message).simplified()};
    }
};

} // namespace

DocumentForm::DocumentForm(const QString& name) : source(wholeSchema(name))
{
    const std::unique_ptr<xmlSchemaParserCtxt, decltype(&xmlSchemaFreeParserCtxt)> parser(
        xmlSchemaNewDocParserCtxt(source.handle()), &xmlSchemaFreeParserCtxt);
    Finding finding;
    xmlSchemaSetParserStructuredErrors(parser.get(), takeFinding, &finding);
    schema.reset(xmlSchemaParse(parser.get()));
    if (!schema) {
        throw std::runtime_error("schema " + name.toStdString() + ": " +
                                 finding.said.toStdString());
    }
}

std::optional<QString> DocumentForm::objectionTo(const Element& root) const
{
    xmlDoc* const document = root.handle()->doc;
    if (auto* const dropped = static_cast<xmlNode*>(document->_private); dropped != nullptr) {
        return u"%1 has %2, which no document has"_s.arg(
            subject(Element(dropped), wayTo(dropped).back().path), Element(dropped).dropped());
    }
    const std::unique_ptr<xmlSchemaValidCtxt, decltype(&xmlSchemaFreeValidCtxt)> judge(
        xmlSchemaNewValidCtxt(schema.get()), &xmlSchemaFreeValidCtxt);
    Finding finding;
    xmlSchemaSetValidStructuredErrors(judge.get(), takeFinding, &finding);
    if (xmlSchemaValidateDoc(judge.get(), document) == 0) {
        return std::nullopt;
    }
    if (finding.node == nullptr) {
        return finding.said;
    }
    const std::vector<Place> way = wayTo(finding.node);
    for (const Place& place : way) {
        if (const QStringList objections = objectionsAt(place, 1); !objections.isEmpty()) {
            return objections.first();
        }
    }
    const Place& place = way.back();
    const Element type = typeOf(place.declaration);
    return listIn(type) ? u"%1: %2"_s.arg(subject(place.element, place.path), finding.said)
                        : textObjection(place.element, type, place.path);
}

std::vector<DocumentForm::Place> DocumentForm::wayTo(xmlNode* node) const
{
    if (node->parent == nullptr || node->parent->type != XML_ELEMENT_NODE) {
        return {{Element(node), source.root().child("element"_L1), QString()}};
    }
    std::vector<Place> way = wayTo(node->parent);
    int number = 1;
    for (const xmlNode* at = node->prev; at != nullptr; at = at->prev) {
        number += xmlStrEqual(at->name, node->name);
    }
    way.push_back(placeIn(way.back(), node, number));
    return way;
}

/// number: of the element among its siblings of the same name, from 1 on.
DocumentForm::Place DocumentForm::placeIn(const Place& around, xmlNode* node, int number) const
{
    const QString name = Element(node).name();
    const Element list = listIn(typeOf(around.declaration));
    const Element row = rowOf(list, name);
    return {Element(node), row,
            around.path + name.left(40) +
                (isRepeated(list, row) ? u"[%1]/"_s.arg(number) : u"/"_s)};
}

Element DocumentForm::typeOf(const Element& declaration) const
{
    if (!declaration) {
        return {};
    }
    const QString name = attributeOf(declaration, "type");
    for (const QLatin1StringView kind : {"complexType"_L1, "simpleType"_L1}) {
        for (const Element& type : source.root().all({kind})) {
            if (nameOf(type) == name) {
                return type;
            }
        }
    }
    return declaration.child("complexType"_L1);
}

/// What is wrong with the elements of an element.
QStringList DocumentForm::objectionsAt(const Place& place, qsizetype most) const
{
    const Element list = listIn(typeOf(place.declaration));
    if (!list) {
        return {};
    }
    if (!place.element.text().isEmpty()) {
        return {u"%1 holds text: expected the elements %2"_s.arg(subject(place.element, place.path),
                                                                 namesIn(list))};
    }
    QStringList objections = countObjections(place.element, list, place.path, most);
    if (objections.isEmpty()) {
        if (const auto order = orderObjection(place.element, list, place.path)) {
            objections.append(*order);
        }
    }
    return objections;
}

/// Whether an element holds a text of the type that is declared for it.
bool DocumentForm::isTextOf(const Element& element, const Element& declaration) const
{
    const Document alone(element);
    xmlNode* const root = alone.root().handle();
    const QByteArray type = attributeOf(declaration, "type").toUtf8();
    xmlNodeSetName(root, reinterpret_cast<const xmlChar*>(type.constData()));
    const std::unique_ptr<xmlSchemaValidCtxt, decltype(&xmlSchemaFreeValidCtxt)> judge(
        xmlSchemaNewValidCtxt(schema.get()), &xmlSchemaFreeValidCtxt);
    Finding unsaid;
    xmlSchemaSetValidStructuredErrors(judge.get(), takeFinding, &unsaid);
    return xmlSchemaValidateDoc(judge.get(), alone.handle()) == 0;
}

/// Appends what is wrong with an element, then with those in it.
void DocumentForm::collect(const Place& place, qsizetype most, QStringList& objections) const
{
    const Element type = typeOf(place.declaration);
    if (!listIn(type)) {
        if (!isTextOf(place.element, place.declaration)) {
            objections.append(textObjection(place.element, type, place.path));
        }
        return;
    }
    objections += objectionsAt(place, most - objections.size());
    QHash<QString, int> numbers;
    for (xmlNode* at = xmlFirstElementChild(place.element.handle());
         at != nullptr && objections.size() < most; at = xmlNextElementSibling(at)) {
        const Place inside = placeIn(place, at, ++numbers[Element(at).name()]);
        if (inside.declaration) {
            collect(inside, most, objections);
        }
    }
}

QStringList DocumentForm::objectionsTo(const Element& root, qsizetype most) const
{
    const std::optional<QString> first = objectionTo(root);
    if (!first) {
        return {};
    }
    QStringList objections;
    collect({root, source.root().child("element"_L1), QString()}, most, objections);
    if (!objections.contains(*first)) { // an attribute, for one
        objections.prepend(*first);
    }
    return objections.first(std::min(most, objections.size()));
}

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/schematable.h"

#include "tests/scenario/protocol/schemacheck.h"

#include <QDomDocument>
#include <QFile>
#include <QHash>
#include <QStringList>

#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

struct Row
{
    QString path;
    QString occurs;
    QString text;
    QString meaning;
};

QDomElement load(const QString& schema)
{
    QFile file(schemaFile(schema));
    QDomDocument xml;
    if (!file.open(QIODevice::ReadOnly) || !xml.setContent(&file)) {
        throw std::runtime_error("cannot read the schema " + schema.toStdString());
    }
    return xml.documentElement();
}

QString documentation(const QDomElement& element)
{
    return element.firstChildElement(u"xs:annotation"_s)
        .firstChildElement(u"xs:documentation"_s)
        .text()
        .simplified();
}

/// Lists the elements of a schema. The order of attributes and types is as protocol/schema has
/// them: named types and groups at the top, elements and groups in one list (sequence, all or
/// choice) of their type.
class Lister
{
public:
    explicit Lister(const QString& schema)
    {
        for (const QString& name : {u"types"_s, schema}) {
            const QDomElement root = load(name);
            for (QDomElement at = root.firstChildElement(); !at.isNull();
                 at = at.nextSiblingElement()) {
                if (at.tagName() != u"xs:element"_s) {
                    types.insert(at.attribute(u"name"_s), at);
                }
            }
        }
        addChildren(load(schema).firstChildElement(u"xs:element"_s), {});
    }

    std::vector<Row> rows;

private:
    QDomElement typeOf(const QDomElement& element) const
    {
        return element.hasAttribute(u"type"_s) ? types.value(element.attribute(u"type"_s))
                                               : element.firstChildElement(u"xs:complexType"_s);
    }

    void addChildren(const QDomElement& element, const QString& path)
    {
        for (const QString& kind : {u"xs:sequence"_s, u"xs:all"_s, u"xs:choice"_s}) {
            const QDomElement list = typeOf(element).firstChildElement(kind);
            addList(list, path, list.attribute(u"maxOccurs"_s) == u"unbounded"_s);
        }
    }

    void addList(const QDomElement& list, const QString& path, bool isRepeated)
    {
        for (QDomElement child = list.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            if (child.tagName() == u"xs:group"_s) {
                addList(types.value(child.attribute(u"ref"_s)).firstChildElement(), path,
                        isRepeated);
            } else if (child.tagName() == u"xs:element"_s) {
                addElement(child, path + child.attribute(u"name"_s), isRepeated);
            }
        }
    }

    void addElement(const QDomElement& element, const QString& path, bool isRepeated)
    {
        const bool isMany = isRepeated || element.attribute(u"maxOccurs"_s) == u"unbounded"_s;
        const bool isOptional = element.attribute(u"minOccurs"_s) == u"0"_s;
        const QDomElement type = typeOf(element);
        const bool isText = type.tagName() == u"xs:simpleType"_s;
        rows.push_back({path,
                        isMany       ? u"any"_s
                        : isOptional ? u"0–1"_s
                                     : u"1"_s,
                        isText ? textOf(type) : QString(), documentation(element)});
        addChildren(element, path + u'/');
    }

    /// What the texts of a type look like.
    QString textOf(const QDomElement& type) const
    {
        const QDomElement set = type.firstChildElement(u"xs:union"_s);
        if (!set.isNull()) {
            QStringList words;
            for (const QString& member : set.attribute(u"memberTypes"_s).split(u' ')) {
                words.append(textOf(types.value(member)));
            }
            return words.join(u", "_s);
        }
        QStringList values;
        for (QDomElement value =
                 type.firstChildElement(u"xs:restriction"_s).firstChildElement(u"xs:enumeration"_s);
             !value.isNull(); value = value.nextSiblingElement()) {
            values.append(u'`' + value.attribute(u"value"_s) + u'`');
        }
        return values.isEmpty() ? documentation(type) : values.join(u", "_s);
    }

    QHash<QString, QDomElement> types;
};

} // namespace

QString schemaTable(const QString& schema, const QString& without)
{
    QStringList known;
    if (!without.isEmpty()) {
        for (const Row& row : Lister(without).rows) {
            known.append(row.path);
        }
    }
    QString table = u"| Element | How often | Text | Meaning |\n|---|---|---|---|\n"_s;
    for (const Row& row : Lister(schema).rows) {
        const bool isContainer = row.text.isEmpty() && row.meaning.isEmpty();
        if (!known.contains(row.path) && !isContainer) {
            table +=
                u"| `%1` | %2 | %3 | %4 |\n"_s.arg(row.path, row.occurs, row.text, row.meaning);
        }
    }
    return table;
}

} // namespace tests

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "protocol/xmltree.h"

#include <QHash>
#include <QStringList>
#include <QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace protocol {
namespace {

QString attributesOf(const QXmlStreamReader& reader)
{
    QStringList texts;
    const QXmlStreamAttributes attributes = reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes) {
        texts.append(u" %1=\"%2\""_s.arg(attribute.qualifiedName().toString(),
                                         attribute.value().toString()));
    }
    texts.sort();
    return texts.join(QString());
}

} // namespace

XmlTree::XmlTree(const QByteArray& document)
{
    QXmlStreamReader reader(document);
    // as the documents are read elsewhere: a prefix is part of the name
    reader.setNamespaceProcessing(false);
    qsizetype open = -1;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            open = append(reader, open);
        } else if (token == QXmlStreamReader::EndElement) {
            open = all.at(open).parent;
        } else if (token == QXmlStreamReader::Characters && open >= 0) {
            all[open].text += reader.text();
        }
    }
    if (reader.hasError()) {
        error = u"%1:%2: %3"_s.arg(reader.lineNumber())
                    .arg(reader.columnNumber())
                    .arg(reader.errorString());
    }
    numberSiblings();
}

/// @return the new element's index
qsizetype XmlTree::append(const QXmlStreamReader& reader, qsizetype parent)
{
    Element element;
    element.name = reader.qualifiedName().toString();
    element.attributes = attributesOf(reader);
    element.line = reader.lineNumber();
    element.parent = parent;
    const qsizetype index = all.size();
    if (parent >= 0) {
        all[parent].children.append(index);
    }
    all.append(element);
    return index;
}

void XmlTree::numberSiblings()
{
    for (qsizetype i = 0; i < all.size(); ++i) {
        QHash<QString, QList<qsizetype>> byName;
        for (const qsizetype child : std::as_const(all.at(i).children)) {
            byName[all.at(child).name].append(child);
        }
        for (const QList<qsizetype>& same : std::as_const(byName)) {
            for (qsizetype n = 0; n < same.size(); ++n) {
                all[same.at(n)].number = int(n) + 1;
                all[same.at(n)].numbered = same.size() > 1;
            }
        }
    }
}

QString XmlTree::path(qsizetype index) const
{
    QStringList steps;
    for (qsizetype i = index; i >= 0; i = all.at(i).parent) {
        const Element& element = all.at(i);
        steps.prepend(element.numbered ? u"%1[%2]"_s.arg(element.name).arg(element.number)
                                       : element.name);
    }
    return u'/' + steps.join(u'/');
}

QList<qsizetype> XmlTree::children(qsizetype index, const QString& name) const
{
    QList<qsizetype> found;
    for (const qsizetype child : all.at(index).children) {
        if (all.at(child).name == name) {
            found.append(child);
        }
    }
    return found;
}

qsizetype XmlTree::find(qsizetype index, const QList<QString>& names) const
{
    qsizetype at = index;
    for (const QString& name : names) {
        const QList<qsizetype>& children = all.at(at).children;
        const auto next = std::find_if(children.cbegin(), children.cend(),
                                       [&](qsizetype child) { return all.at(child).name == name; });
        if (next == children.cend()) {
            return -1;
        }
        at = *next;
    }
    return at;
}

QString XmlTree::wholeText(qsizetype index) const
{
    // document order puts everything inside an element right behind it
    QString text = all.at(index).text;
    for (qsizetype i = index + 1; i < all.size() && all.at(i).parent >= index; ++i) {
        text += all.at(i).text;
    }
    return text;
}

} // namespace protocol

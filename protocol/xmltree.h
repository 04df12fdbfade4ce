// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class QXmlStreamReader;

namespace protocol {

/// A document as one reads it: its elements in document order, each with its path and the line on
/// which it begins. Knows no element by name. A flat list, so that no nesting, however deep, costs
/// stack.
class XmlTree
{
public:
    struct Element
    {
        QString name;
        /// Its attributes as they are written, sorted by name: ` a="1" b="2"`.
        QString attributes;
        /// Its own text, that of its children left out.
        QString text;
        /// Line of the document, counted from 1, on which its start tag ends.
        qint64 line = 0;
        /// Index of the element around it, -1 for the root.
        qsizetype parent = -1;
        /// Which one it is among its siblings of that name, from 1.
        int number = 1;
        /// Whether it has such siblings.
        bool numbered = false;
        QList<qsizetype> children;
    };

    /// Reads as far as the document can be read.
    explicit XmlTree(const QByteArray& document);

    /// Why the document could not be read to its end; empty when it was.
    QString problem() const { return error; }
    const QList<Element>& elements() const { return all; }

    /// Such as /check/lines/line[2]/sum; a number only where siblings share the name.
    QString path(qsizetype index) const;
    /// The children of that name, in document order.
    QList<qsizetype> children(qsizetype index, const QString& name) const;
    /// The first element below index whose way there has these names, each time the first child of
    /// the name; -1 when there is none.
    qsizetype find(qsizetype index, const QList<QString>& names) const;
    /// The text of an element with that of all elements in it.
    QString wholeText(qsizetype index) const;

private:
    qsizetype append(const QXmlStreamReader& reader, qsizetype parent);
    void numberSiblings();

    QList<Element> all;
    QString error;
};

} // namespace protocol

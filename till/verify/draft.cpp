// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/draft.h"

#include "till/checks/amount.h"

#include <QUuid>

using namespace Qt::StringLiterals;

namespace till::verify {

namespace names = protocol::names;

Draft::Draft(const QByteArray& given)
{
    document.setContent(given);
}

QDomElement Draft::reached(QDomElement from, const Names& way)
{
    for (const QString& name : way) {
        from = from.firstChildElement(name);
    }
    return from;
}

void Draft::setText(QDomElement element, const QString& text)
{
    while (element.hasChildNodes()) {
        element.removeChild(element.firstChild());
    }
    element.appendChild(document.createTextNode(text));
}

void Draft::setReached(QDomElement from, const Names& way, const QString& text)
{
    for (const QString& name : way) {
        QDomElement next = from.firstChildElement(name);
        if (next.isNull()) {
            next = from.appendChild(document.createElement(name)).toElement();
        }
        from = next;
    }
    setText(from, text);
}

QDomElement Draft::lineAt(int line) const
{
    QDomElement at = reached(document.documentElement(), {names::items, names::rawItem});
    for (int i = 0; i < line; ++i) {
        at = at.nextSiblingElement(names::rawItem);
    }
    return at;
}

Draft& Draft::set(const Names& way, const QString& text)
{
    setReached(document.documentElement(), way, text);
    return *this;
}

Draft& Draft::setInLine(int line, const Names& way, const QString& text)
{
    setReached(lineAt(line), way, text);
    return *this;
}

Draft& Draft::removeFromLine(int line, const Names& way)
{
    QDomElement found = reached(lineAt(line), way);
    found.parentNode().removeChild(found);
    return *this;
}

Draft& Draft::addLine(int id)
{
    const QDomElement items = reached(document.documentElement(), {names::items});
    QDomElement line = items.lastChildElement(names::rawItem).cloneNode(true).toElement();
    setText(line.firstChildElement(names::id), QString::number(id));
    QDomElement(items).appendChild(line);
    return *this;
}

Draft& Draft::makeLines(int count)
{
    for (int id = lineCount() + 1; id <= count; ++id) {
        addLine(id);
    }
    qint64 sum = 0;
    for (QDomElement line = lineAt(0); !line.isNull();
         line = line.nextSiblingElement(names::rawItem)) {
        sum += readAmount(line.firstChildElement(names::total).text()).value_or(0);
    }
    return set({names::total}, amount::moneyText(sum));
}

Draft& Draft::makeNew()
{
    return set({names::id}, QUuid::createUuid().toString(QUuid::WithoutBraces));
}

QString Draft::text(const Names& way) const
{
    return reached(document.documentElement(), way).text();
}

QString Draft::textInLine(int line, const Names& way) const
{
    return reached(lineAt(line), way).text();
}

qint64 Draft::kopecksInLine(int line, const Names& way) const
{
    return readAmount(textInLine(line, way)).value_or(0);
}

int Draft::lineCount() const
{
    int count = 0;
    for (QDomElement line = lineAt(0); !line.isNull();
         line = line.nextSiblingElement(names::rawItem)) {
        ++count;
    }
    return count;
}

} // namespace till::verify

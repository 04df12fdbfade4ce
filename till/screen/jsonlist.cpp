// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/jsonlist.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace till {

JsonList::JsonList(Write into) : write(std::move(into))
{
    write(u"[\n"_s);
}

void JsonList::add(const QJsonObject& object)
{
    const QString indent(4, u' ');
    QString text = QString::fromUtf8(QJsonDocument(object).toJson()).trimmed();
    // no line break stands inside a text: JSON writes it as \n
    text.replace(u'\n', u'\n' + indent);
    write((isFirst ? QString() : u",\n"_s) + indent + text);
    isFirst = false;
}

void JsonList::end()
{
    write(isFirst ? u"]\n"_s : u"\n]\n"_s);
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/xmlwriter.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

void writeText(QString& out, const QString& text)
{
    for (const QChar character : text) {
        switch (character.unicode()) {
        case u'<':
            out += "&lt;"_L1;
            break;
        case u'>':
            out += "&gt;"_L1;
            break;
        case u'&':
            out += "&amp;"_L1;
            break;
        case u'\r': // a bare one would be read back as a line feed
            out += "&#13;"_L1;
            break;
        default:
            out += character;
        }
    }
}

void writeElement(QString& out, const Element& element, int depth)
{
    const QString indent(depth, u' ');
    out += indent + u'<' + element.name;
    if (element.children.empty() && element.text.isEmpty()) {
        out += "/>\n"_L1;
        return;
    }
    out += u'>';
    if (element.children.empty()) {
        writeText(out, element.text);
    } else {
        out += u'\n';
        for (const Element& child : element.children) {
            writeElement(out, child, depth + 1);
        }
        out += indent;
    }
    out += "</"_L1 + element.name + ">\n"_L1;
}

} // namespace

QByteArray writeXml(const Element& root)
{
    QString out;
    writeElement(out, root, 0);
    return out.toUtf8();
}

QByteArray xmlDigest(const Element& root)
{
    return QCryptographicHash::hash(writeXml(root), QCryptographicHash::Sha256);
}

} // namespace simulator

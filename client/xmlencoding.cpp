// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/xmlencoding.h"

#include "client/xmllimits.h"

#include <QLatin1StringView>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView utf8Mark("\xef\xbb\xbf");

/// Others may be as well; they are decoded.
bool isAsciiSuperset(const QString& name)
{
    static const QRegularExpression pattern(
        u"^(utf-?8|(us-)?ascii|koi8-[ru]|(ibm|cp)866|latin1|iso-8859-[0-9]{1,2}|"
        "(windows-|cp)125[0-9])$"_s,
        QRegularExpression::CaseInsensitiveOption);
    return pattern.match(name).hasMatch();
}

} // namespace

namespace orva {

XmlEncoding::XmlEncoding(const QByteArray& xmlText)
    : text(xmlText),
      told(QStringConverter::encodingForData(text, u'<').value_or(QStringConverter::Utf8)),
      marked(QStringConverter::encodingForData(text).has_value())
{
    if (told != QStringConverter::Utf8) {
        readDeclaration(toldText());
        return;
    }
    const QByteArrayView unmarked = QByteArrayView(text).sliced(marked ? utf8Mark.size() : 0);
    if (unmarked.startsWith("<?xml")) {
        const qsizetype end = unmarked.indexOf('<', 1);
        readDeclaration(QString::fromUtf8(end < 0 ? unmarked : unmarked.first(end)));
    }
}

void XmlEncoding::readDeclaration(const QString& start)
{
    if (!start.startsWith("<?xml"_L1)) {
        return;
    }
    // no value that the parser accepts here has a question mark, and no value at all has a "<"
    const qsizetype end = start.indexOf("?>"_L1);
    const qsizetype next = start.indexOf(u'<', 1);
    refused = end < 0 || (next >= 0 && next < end);
    const QString head = start.left(refused ? next : end + 2);
    overloaded = head.count(u'=') > xmllimit::declarationAttributes;
    if (!refused && !overloaded) {
        // the parser's own reading: names may be written with references
        QXmlStreamReader reader(head);
        reader.readNext();
        refused = reader.hasError();
        declared = reader.documentEncoding().toString();
        declarationEnd = end + 2;
    }
}

QString XmlEncoding::toldText() const
{
    QStringDecoder decoder(told);
    return decoder(text);
}

bool XmlEncoding::keepsAscii() const
{
    return told == QStringConverter::Utf8 &&
           (declared.isEmpty() || (!marked && isAsciiSuperset(declared)));
}

QString XmlEncoding::decoded() const
{
    if (refused) {
        return {};
    }
    const QString before = toldText();
    if (declared.isEmpty()) {
        return before;
    }
    // The parser decodes anew from the first byte and goes on at the same number of characters,
    // whatever stands there now.
    QStringDecoder decoder(declared.toLatin1().constData());
    const QString behind = decoder.isValid() ? QString(decoder(text)) : QString();
    return behind.isEmpty() ? behind : before.left(declarationEnd) + behind.mid(declarationEnd);
}

} // namespace orva

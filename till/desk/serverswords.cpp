// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/serverswords.h"

#include "console/printable.h"
#include "host/http/refusallistener.h"
#include "host/queue/xmltext.h"
#include "till/checks/cardnumber.h"

#include <QRegularExpression>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// The encoding that "text/html; charset=windows-1251" names; empty for none.
QByteArray charsetIn(const QString& contentType)
{
    static const QRegularExpression charset(u"charset\\s*=\\s*\"?([^\\s\";]+)"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    return charset.match(contentType).captured(1).toLatin1();
}

QString decoded(const QByteArray& body, const QString& contentType)
{
    const QByteArray trimmed = body.trimmed();
    if (trimmed.startsWith("<?xml") || QStringConverter::encodingForData(body)) {
        return poshost::xmltext::decoded(trimmed);
    }
    QStringDecoder named(charsetIn(contentType).constData());
    if (named.isValid()) {
        return named(body);
    }
    QStringDecoder ofPage = QStringDecoder::decoderForHtml(body);
    return ofPage.isValid() ? QString(ofPage(body)) : QString::fromUtf8(body);
}

/// A page or a document without its markup; any other text as it is.
QString withoutMarkup(QString text)
{
    if (!text.trimmed().startsWith(u'<')) {
        return text;
    }
    static const QRegularExpression unread(u"<!--.*?(-->|$)|<(script|style)\\b.*?(</\\2\\s*>|$)"_s,
                                           QRegularExpression::CaseInsensitiveOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression tag(u"<[^>]*(>|$)"_s);
    return poshost::xmltext::withoutReferences(text.replace(unread, u" "_s).replace(tag, u" "_s));
}

/// At most so many characters, and none of them half; no half of a name either, which nobody could
/// take out afterwards.
QString cut(const QString& line, qsizetype most)
{
    if (line.size() <= most) {
        return line;
    }
    const qsizetype end = most - 1;
    return poshost::xmltext::withoutHalfWord(
               line.first(line.at(end - 1).isHighSurrogate() ? end - 1 : end)) +
           u'…';
}

/// The text of a body in one line, however long.
QString wholeLine(const QByteArray& body, const QString& contentType)
{
    return console::printable::line(withoutMarkup(decoded(body, contentType)).simplified());
}

} // namespace

QString serverswords::lineOf(const QByteArray& body, const QString& contentType)
{
    return cut(wholeLine(body, contentType), longest);
}

QString serverswords::lineOf(const poshost::RefusalListener& heard, const QString& card)
{
    QString line = wholeLine(heard.body(), heard.contentType());
    // what is shown of a number anyway would also be found in others
    if (card.size() > cardnumber::shownDigits) {
        line.replace(card, cardnumber::shortened(card));
    }
    return cut(line, longest);
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/person/cardspelling.h"

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace till {

QString cardspelling::plain(const QString& written)
{
    static const QRegularExpression opening(u"^\\s*(;|%[A-Za-z]?)"_s);
    static const QRegularExpression behind(u"[=^?].*$"_s,
                                           QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression between(u"[^\\p{L}\\p{N}]"_s,
                                            QRegularExpression::UseUnicodePropertiesOption);
    QString number = written;
    return number.remove(opening).remove(behind).remove(between).toUpper();
}

QString cardspelling::pattern(const QString& plainNumber)
{
    QStringList characters;
    for (const QChar character : plainNumber) {
        characters.append(QRegularExpression::escape(QString(character)));
    }
    const QString between = u"[\\s\\p{Z}.\\-_/]{0,2}"_s;
    const QString before = u"(?:(?<=%B)|(?<![\\p{L}\\p{N}]))0{0,9}"_s;
    // expiry and whatever else a track holds: digits behind "=", or the owner's name between "^"
    const QString track = u"(?:=[\\d=]*[?]?|\\^[^\\^?<\"\\n]{0,40}\\^[^?<\"\\n]{0,80}[?]?)?"_s;
    return before + characters.join(between) + u"(?![\\p{L}\\p{N}])"_s + track;
}

} // namespace till

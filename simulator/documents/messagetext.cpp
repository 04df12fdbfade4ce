// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/messagetext.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

QRegularExpressionMatchIterator inBraces(const QString& text)
{
    static const QRegularExpression pattern(u"\\{([A-Za-z]*)\\}"_s);
    return pattern.globalMatch(text);
}

bool isOfOwner(const QString& placeholder)
{
    return placeholder == "name"_L1 || placeholder == "surname"_L1;
}

/// Without the punctuation that led up to a name, or away from it, where there was none.
QString withoutLonePunctuation(QString text)
{
    static const QRegularExpression atStart(u"^[\\s,:;]+"_s);
    static const QRegularExpression beforeOther(u"[\\s,]+(?=[,.:;!?])"_s);
    static const QRegularExpression severalBlanks(u" {2,}"_s);
    text.replace(severalBlanks, u" "_s).replace(beforeOther, QString());
    const qsizetype before = text.size();
    text.remove(atStart);
    if (text.size() < before && !text.isEmpty()) {
        text.front() = text.front().toUpper();
    }
    return text;
}

} // namespace

QStringList placeholders()
{
    return {u"name"_s, u"surname"_s,  u"balance"_s, u"spend"_s,
            u"earn"_s, u"discount"_s, u"total"_s};
}

QString unknownPlaceholder(const QString& text)
{
    QRegularExpressionMatchIterator matches = inBraces(text);
    while (matches.hasNext()) {
        const QString name = matches.next().captured(1);
        if (!placeholders().contains(name)) {
            return name.isEmpty() ? u" "_s : name;
        }
    }
    return {};
}

QString messageText(const QString& text, const QHash<QString, QString>& values)
{
    QString result;
    qsizetype written = 0;
    bool isNameless = false;
    QRegularExpressionMatchIterator matches = inBraces(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += QStringView(text).sliced(written, match.capturedStart() - written);
        const QString value = values.value(match.captured(1));
        isNameless = isNameless || (isOfOwner(match.captured(1)) && value.trimmed().isEmpty());
        result += value;
        written = match.capturedEnd();
    }
    result += QStringView(text).sliced(written);
    return isNameless ? withoutLonePunctuation(result) : result;
}

} // namespace simulator

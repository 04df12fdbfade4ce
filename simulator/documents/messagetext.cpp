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
    QRegularExpressionMatchIterator matches = inBraces(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += QStringView(text).sliced(written, match.capturedStart() - written);
        result += values.value(match.captured(1));
        written = match.capturedEnd();
    }
    result += QStringView(text).sliced(written);
    return result;
}

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "console/printable.h"

#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace console {
namespace {

constexpr char16_t nextLine = 0x85;
constexpr char16_t lineSeparator = 0x2028;
constexpr char16_t paragraphSeparator = 0x2029;

bool isBetween(char16_t code, char16_t first, char16_t last)
{
    return code >= first && code <= last;
}

bool isControl(char16_t code)
{
    constexpr char16_t firstPrintable = u' ';
    constexpr char16_t del = 0x7f;
    constexpr char16_t lastOfC1 = 0x9f;
    return code < firstPrintable || isBetween(code, del, lastOfC1);
}

/// Embeddings, overrides and isolates, and the marks; all in the first plane.
bool turnsDirection(char16_t code)
{
    return code == 0x61c || isBetween(code, 0x200e, 0x200f) || isBetween(code, 0x202a, 0x202e) ||
           isBetween(code, 0x2066, 0x2069);
}

bool isSafe(QChar character)
{
    const char16_t code = character.unicode();
    return !isControl(code) && !turnsDirection(code) && code != lineSeparator &&
           code != paragraphSeparator;
}

bool breaksLine(QChar character)
{
    const char16_t code = character.unicode();
    return isBetween(code, u'\n', u'\r') || code == nextLine || code == lineSeparator ||
           code == paragraphSeparator;
}

void appendCode(QString& text, QChar character)
{
    text += u"\\u%1"_s.arg(uint(character.unicode()), 4, 16, QLatin1Char('0'));
}

/// How many characters of a word fit on a line, at least one that people see as one.
qsizetype fitting(const QString& word, qsizetype width)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, word);
    finder.setPosition(width);
    if (finder.isAtBoundary()) {
        return width;
    }
    const qsizetype before = finder.toPreviousBoundary();
    return before > 0 ? before : std::max<qsizetype>(finder.toNextBoundary(), 1);
}

} // namespace

QString printable::lines(const QString& text)
{
    const auto isPlain = [](QChar character) { return character == u'\n' || isSafe(character); };
    if (std::all_of(text.cbegin(), text.cend(), isPlain)) {
        return text;
    }
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        if (character == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n') {
            continue;
        }
        if (character == u'\t') {
            result += u' ';
        } else if (isPlain(character)) {
            result += character;
        } else {
            appendCode(result, character);
        }
    }
    return result;
}

QString printable::line(const QString& text)
{
    QString joined;
    joined.reserve(text.size());
    bool afterBreak = false;
    for (const QChar character : text) {
        const bool isBreak = breaksLine(character);
        if (!isBreak) {
            joined += character;
        } else if (!afterBreak) {
            joined += u' ';
        }
        afterBreak = isBreak;
    }
    return lines(joined);
}

QStringList printable::wrapped(const QString& text, qsizetype width)
{
    QString unified = text;
    unified.replace("\r\n"_L1, "\n"_L1);
    std::replace_if(unified.begin(), unified.end(), breaksLine, QChar(u'\n'));
    QStringList rows;
    const QStringList written = lines(unified).split(u'\n');
    for (const QString& one : written) {
        QString row;
        const QStringList words = one.split(u' ', Qt::SkipEmptyParts);
        for (QString word : words) {
            if (!row.isEmpty() && row.size() + 1 + word.size() > width) {
                rows.append(row);
                row.clear();
            }
            row += row.isEmpty() ? QString() : u" "_s;
            for (; word.size() > width; row.clear()) {
                const qsizetype part = fitting(word, width);
                rows.append(word.left(part));
                word.remove(0, part);
            }
            row += word;
        }
        rows.append(row);
    }
    return rows;
}

QString printable::folded(const QString& lines, qsizetype width)
{
    constexpr qsizetype indent = 4;
    QString text;
    const QStringList whole = lines.split(u'\n');
    for (qsizetype i = 0; i < whole.size(); ++i) {
        text += i == 0 ? QString() : u"\n"_s;
        if (whole.at(i).size() <= width) {
            text += whole.at(i);
            continue;
        }
        // as if the continuation were the rule: a first line of the same width leaves no word over
        text += wrapped(whole.at(i), width - indent).join(u'\n' + QString(indent, u' '));
    }
    return text;
}

QString printable::csv(const QString& value)
{
    QString text = line(value);
    const bool needsQuotes = text.contains(u',') || text.contains(u'"');
    return needsQuotes ? u'"' + text.replace(u'"', "\"\""_L1) + u'"' : text;
}

} // namespace console

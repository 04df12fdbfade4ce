// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/sourcedocuments.h"

#include <QDir>
#include <QDirIterator>
#include <QDomDocument>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

const QString projectFolder = QStringLiteral(ORVA_SOURCE_FOLDER);

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What a literal between its quotes stands for.
QByteArray unescaped(const QString& literal)
{
    static const QRegularExpression escape(
        u"\\\\(x[0-9A-Fa-f]+|u[0-9A-Fa-f]{4}|U[0-9A-Fa-f]{8}|[0-7]{1,3}|.)"_s);
    QByteArray result;
    qsizetype done = 0;
    for (auto it = escape.globalMatch(literal); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        result += literal.mid(done, match.capturedStart() - done).toUtf8();
        done = match.capturedEnd();
        const QString code = match.captured(1);
        const char16_t first = code.at(0).unicode();
        if (first == u'x') {
            result += static_cast<char>(code.mid(1).toInt(nullptr, 16));
        } else if (first == u'u' || first == u'U') {
            const char32_t character = code.mid(1).toUInt(nullptr, 16);
            result += QString::fromUcs4(&character, 1).toUtf8();
        } else {
            result += first == u'n' ? "\n" : first == u't' ? "\t" : code.toUtf8();
        }
    }
    return result + literal.mid(done).toUtf8();
}

/// Whether a text is a whole document with an element of the exchange in it.
bool isDocument(const QByteArray& text)
{
    static const QRegularExpression ours(
        u"<(RawCheck\\w*|RawItem\\w*|client|awards|items|informing|payments)[ />]"_s);
    static const QRegularExpression placeholder(u"%[0-9]"_s);
    const QString readable = QString::fromUtf8(text);
    QDomDocument xml;
    return readable.trimmed().startsWith(u'<') && ours.match(readable).hasMatch() &&
           !placeholder.match(readable).hasMatch() && xml.setContent(text);
}

} // namespace

std::vector<QByteArray> stringLiterals(const QString& source)
{
    // a comment, a character, a raw string, a string with the suffix it may have
    static const QRegularExpression token(
        u"//[^\\n]*|/\\*.*?\\*/|'(?:[^'\\\\\\n]|\\\\.)+'|"
        "R\"(\\w*)\\((.*?)\\)\\1\"(?:_\\w+)?|\"((?:[^\"\\\\\\n]|\\\\.)*)\"(?:_\\w+)?"_s,
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression between(u"^\\s*(?:u8|[uUL])?$"_s);
    std::vector<QByteArray> literals;
    qsizetype end = -1;
    for (auto it = token.globalMatch(source); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const bool isRaw = match.hasCaptured(2);
        if (!isRaw && !match.hasCaptured(3)) {
            continue;
        }
        const QByteArray text = isRaw ? match.captured(2).toUtf8() : unescaped(match.captured(3));
        const bool joins =
            end >= 0 && between.match(source.mid(end, match.capturedStart() - end)).hasMatch();
        if (joins) {
            literals.back() += text;
        } else {
            literals.push_back(text);
        }
        end = match.capturedEnd();
    }
    return literals;
}

std::vector<WireDocument> sourceDocuments()
{
    std::vector<WireDocument> documents;
    for (const QString& folder : {u"tests"_s, u"bench"_s}) {
        QDirIterator files(projectFolder + u'/' + folder, {u"*.xml"_s, u"*.cpp"_s, u"*.h"_s},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const QString name = QDir(projectFolder).relativeFilePath(path);
            if (name.endsWith(u".xml"_s)) {
                documents.push_back({name, bytesOf(path)});
                continue;
            }
            for (const QByteArray& text : stringLiterals(QString::fromUtf8(bytesOf(path)))) {
                if (isDocument(text)) {
                    documents.push_back({name, text});
                }
            }
        }
    }
    return documents;
}

} // namespace tests

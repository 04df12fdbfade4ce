// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/record.h"

#include "input/readfile.h"
#include "till/failure.h"
#include "till/recording/longlists.h"
#include "till/recording/recordedaddresses.h"
#include "till/recording/recordedevents.h"
#include "till/recording/recordedtexts.h"
#include "till/text.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace till {
namespace {

const QString formatName = u"orva-till recording"_s;
/// Twenty times what a folder of records holds by default.
constexpr qint64 largestExport = 1024 * 1024 * 1024;

[[noreturn]] void fail(const QString& file, qsizetype line, const QString& what)
{
    throw Failure(Text::tr("%1, line %2: %3.").arg(file).arg(line).arg(what), ExitCode::Usage);
}

[[noreturn]] void notRead(const QString& fileName, const input::FileError& error)
{
    if (error.kind() == input::FileError::Kind::Unreadable) {
        throw Failure(Text::tr("%1 cannot be read (%2); check path and rights.")
                          .arg(fileName, error.reason()),
                      ExitCode::Usage);
    }
    throw Failure(Text::tr("%1 is no regular file of at most %2 bytes; name an exported recording.")
                      .arg(fileName)
                      .arg(largestExport),
                  ExitCode::Usage);
}

QByteArray contentOf(const QString& fileName)
{
    try {
        return input::readFile(fileName, largestExport);
    } catch (const input::FileError& error) {
        notRead(fileName, error);
    }
}

void requireKnownFormat(const QJsonObject& header, const QString& file, qsizetype line)
{
    if (!Record::isOfTill(header)) {
        fail(file, line, Text::tr("this is no recording"));
    }
    if (header.value(u"version"_s).toInt() > Record::version) {
        fail(file, line, Text::tr("the recording was written by a newer till; use that one"));
    }
}

void merge(QJsonObject& target, const QJsonObject& more)
{
    for (auto it = more.begin(); it != more.end(); ++it) {
        target.insert(it.key(), it.value());
    }
}

} // namespace

int Record::number() const
{
    return header.value(u"number"_s).toInt();
}

QJsonObject Record::config() const
{
    return header.value(u"config"_s).toObject();
}

QString Record::checkId() const
{
    return document(0).value(u"id"_s).toString();
}

QString Record::cardNumber() const
{
    for (const QJsonObject& call : calls) {
        const QString number = call.value(u"card"_s).toObject().value(u"number"_s).toString();
        if (!number.isEmpty()) {
            return number;
        }
    }
    for (const QJsonObject& document : documents) {
        const QJsonArray cards = document.value(u"cards"_s).toArray();
        if (!cards.isEmpty()) {
            return cards.first().toObject().value(u"number"_s).toString();
        }
    }
    return {};
}

bool Record::isOfTill(const QJsonObject& line)
{
    return line.value(u"format"_s).toString() == formatName;
}

bool Record::isHeader(const QJsonObject& line)
{
    return line.contains(u"format"_s);
}

QString Record::add(const QJsonObject& written)
{
    QJsonObject line = written;
    const bool whole = RecordedTexts::putBack(line, texts);
    longlists::putBack(line);
    if (line.contains(u"document"_s)) {
        if (line.value(u"document"_s).toInt(-1) != documents.size()) {
            return Text::tr("the documents are not in order");
        }
        QJsonObject content = line.value(u"content"_s).toObject();
        if (line.contains(u"from"_s)) {
            content = document(line.value(u"from"_s).toInt(-1));
            merge(content, line.value(u"changed"_s).toObject());
        }
        documents.append(content);
    } else if (line.contains(u"config"_s)) {
        QJsonObject known = config();
        merge(known, line.value(u"config"_s).toObject());
        header.insert(u"config"_s, known);
    } else if (line.contains(u"call"_s)) {
        line.insert(u"events"_s, RecordedEvents::joined(line.value(u"events"_s).toArray()));
        calls.append(line);
    } else if (line.value(u"text"_s).toInt(-1) == texts.size()) {
        texts.append(line.value(u"content"_s).toString());
    } else {
        return Text::tr("this is no line of a record");
    }
    return whole ? QString() : Text::tr("this is no line of a record");
}

QList<Record> Record::parse(const QByteArray& content, const QString& fileName)
{
    QList<Record> records;
    qsizetype number = 0;
    qsizetype start = 0;
    while (start < content.size()) {
        const qsizetype end = content.indexOf('\n', start);
        const QByteArray text = content.mid(start, end < 0 ? -1 : end - start);
        start = end < 0 ? content.size() : end + 1;
        ++number;
        const QJsonObject line = recordedaddresses::cleaned(QJsonDocument::fromJson(text).object());
        if (line.isEmpty() && end < 0 && !records.isEmpty()) {
            records.last().cut = true;
            break;
        }
        if (isHeader(line)) {
            requireKnownFormat(line, fileName, number);
            records.append(Record{line, {}, {}, false, {}});
            continue;
        }
        const QString problem =
            records.isEmpty() ? Text::tr("this is no recording") : records.last().add(line);
        if (!problem.isEmpty()) {
            fail(fileName, number, problem);
        }
    }
    return records;
}

QList<Record> Record::read(const QString& fileName)
{
    return parse(contentOf(fileName), fileName);
}

QByteArray Record::handedOn(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Failure(Text::tr("%1 cannot be read (%2); check path and rights.")
                          .arg(fileName, file.errorString()));
    }
    QByteArray content;
    while (!file.atEnd()) {
        const QByteArray text = file.readLine();
        const QJsonObject line = QJsonDocument::fromJson(text).object();
        if (line.isEmpty() || !text.endsWith('\n')) {
            break; // cut off; it must not swallow the next record's first line
        }
        content += Record::lineOf(recordedaddresses::cleaned(line));
    }
    return content;
}

QList<QByteArray> Record::apart(const QByteArray& content)
{
    QList<QByteArray> records;
    qsizetype start = 0;
    while (start < content.size()) {
        const qsizetype newLine = content.indexOf('\n', start);
        const qsizetype end = newLine < 0 ? content.size() : newLine + 1;
        const QByteArray line = content.mid(start, end - start);
        start = end;
        // few lines are worth taking apart to find the headers
        const bool isFirst =
            line.contains("\"format\"") && isOfTill(QJsonDocument::fromJson(line).object());
        if (records.isEmpty() || isFirst) {
            records.append(line);
        } else {
            records.last() += line;
        }
    }
    return records;
}

QByteArray Record::lineOf(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

namespace till {

/// One check's dealings with the loyalty system in one run of the till, as they were recorded: the
/// host's calls in their order, each with the document before and after it and with everything that
/// the plug-in asked the host for meanwhile.
///
/// Written as JSON Lines, so that a record that was cut off is good up to the last whole line:
///
///     {"format":"orva-till recording","version":3,"number":7,"started":…,"session":…,"config":{…}}
///     {"document":0,"content":{…}}                       the whole document
///     {"document":1,"from":0,"changed":{…}}              the fields that are others than in 0
///     {"config":{…}}                                     values asked for later
///     {"text":0,"content":"…"}                           a long text, once
///     {"call":"request","before":0,"after":1,"at":…,"milliseconds":…,"events":[…],"result":…}
///
/// An event is one of {"clock":…}, {"transport":"getError"}, {"exchange":{…}}, {"queue":{…}}; of
/// {"clock":…,"times":3} there were three, with equal readings. {"text":0} stands for that long
/// text as a request, an answer, a value of a queued message or of a document's plug-in data.
/// A list of many entries is {"series":[...]} (longlists.h). Version 1 has none of the three,
/// version 2 no series; read, all are the same.
struct Record
{
    static constexpr int version = 3;

    /// The first line.
    QJsonObject header;
    QList<QJsonObject> documents;
    QList<QJsonObject> calls;
    /// Whether the last line was cut off.
    bool cut = false;
    /// Long texts by their index; documents and calls have them in place.
    QStringList texts;

    int number() const;
    /// Values of the configuration that the plug-in asked for; no secrets.
    QJsonObject config() const;
    /// The document of that index; an empty one where the record has none.
    QJsonObject document(int index) const { return documents.value(index); }
    /// The first document's identifier.
    QString checkId() const;
    /// The number of the one card; empty when no card was presented.
    QString cardNumber() const;

    /// Takes a line over. @return why it is none of a record; empty when it is
    QString add(const QJsonObject& written);
    static bool isHeader(const QJsonObject& line);
    /// Whether it is a header that a till has written, of whatever version.
    static bool isOfTill(const QJsonObject& line);

    /// The records of a file, of which an exported one may hold several.
    /// @throws Failure (Usage) with file and line where it is no such file
    static QList<Record> read(const QString& fileName);
    static QList<Record> parse(const QByteArray& content, const QString& fileName);

    /// A record's file as it is handed on: its whole lines, with addresses fit to be shown.
    /// @throws Failure when it cannot be read
    static QByteArray handedOn(const QString& fileName);

    /// The records of a file one by one, each with all its lines as they stand there.
    static QList<QByteArray> apart(const QByteArray& content);

    static QByteArray lineOf(const QJsonObject& object);
};

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/record.h"
#include "till/recording/recordtarget.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QList>
#include <QString>

#include <memory>

class Config;

namespace till {

/// A file that is named like a record.
struct RecordFile
{
    int number = 0;
    QString path;
    qint64 bytes = 0;
    QDateTime changed;

    /// Whether a till has written it: its first line is a record's and has the file's own number.
    bool isRecord() const;
};

/// The folder of records: a file of JSON Lines for each, 000001.jsonl and so on, readable by their
/// owner only. Plain files and no database, because a record is written once, in order, and then
/// only read, copied or removed: a line is added with one write and without locks between tills,
/// what is damaged damages nothing else, the bounds are kept by removing the oldest files, and
/// grep reads them.
///
/// Together the files hold no more than the configured number of bytes, and none older than the
/// configured number of days is left when a record begins; what other tills write into the same
/// folder is seen within a minute. Numbers begin again when the folder has become empty.
///
/// Other files in the folder are left alone, whatever they are called: nothing is counted or
/// removed but regular files with exactly such a name whose first line says that they are the
/// record of that number.
class RecordFolder : public RecordTarget
{
public:
    static constexpr int defaultMegabytes = 50;
    static constexpr int defaultDays = 30;

    struct Bounds
    {
        qint64 bytes = defaultMegabytes * 1024LL * 1024;
        int days = defaultDays;
    };

    /// The folder that the configuration names under "recording:folder"; null when it names none.
    static std::unique_ptr<RecordFolder> configured(const Config& config);

    /// Looks at nothing yet.
    RecordFolder(const QString& folder, const Bounds& allowed) : path(folder), bounds(allowed) {}

    /// Makes the folder where it is missing and begins the next file.
    void begin(QJsonObject header) override;
    void add(const QJsonObject& line) override;

    /// Takes a record over as it is, under the number that it has.
    /// @throws Failure when it has none, or there is one of that number
    void take(const QByteArray& lines);

    /// What is named like a record, sorted by number.
    QList<RecordFile> files() const;
    /// Those of them that a till has written.
    QList<RecordFile> records() const;
    /// @throws Failure when there is no such record or it cannot be read
    Record read(int number) const;
    QString name() const { return path; }

private:
    void makeFolder() const;
    void look();
    void openNext();
    void removeOld();
    void makeRoom(qint64 wanted);
    void removeOldest();

    QString path;
    Bounds bounds;
    std::unique_ptr<QFile> file;
    /// The files of the last look, with what was written since; the present record's is the last.
    QList<RecordFile> known;
    qint64 total = 0;
    QElapsedTimer lastLook;
};

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/person/person.h"
#include "till/support/supportarchive.h"

#include <QMap>

namespace till {

class CheckStore;
class RecordFolder;

/// What goes into a support archive, gathered part by part; whatever is added, but for pages, is
/// masked when the archive is made, unless cards are wanted.
class SupportContent
{
public:
    /// @param withCards card numbers and names stay
    explicit SupportContent(bool withCards) : showsPeople(withCards) {}

    /// A file without records and checks in it, such as lists and reports.
    void addText(const QString& name, const QByteArray& content);
    /// The end of a log.
    void addLog(const QByteArray& content);
    /// Whole lines of a record.
    void addRecord(const QByteArray& lines);
    /// A record as a page, which nobody masks any more.
    void addPage(int record, const QByteArray& content);
    /// A closed check, once.
    /// @param confirmation its message as the queue has it; empty when there is none
    void addCheck(const Check& check, const QString& confirmation);
    /// Names that may stand in texts and logs, beside those of the records and checks here.
    void addPeople(const People& others) { people.add(others); }

    /// The archive; what was added stays as it was.
    SupportArchive archive() const;

private:
    struct KeptCheck
    {
        Check check;
        QString confirmation;
    };

    QList<TarMember> maskedParts() const;

    const bool showsPeople;
    People people;
    People inRecords;
    QList<TarMember> texts;
    QList<QByteArray> logs;
    QByteArray records;
    QList<TarMember> pages;
    QMap<QString, KeptCheck> checks;
};

} // namespace till

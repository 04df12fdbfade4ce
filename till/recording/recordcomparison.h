// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/record.h"

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace till {

/// Where a replay does something else than the record says.
struct RecordDifference
{
    /// Which call, from 1, and its name.
    int call = 0;
    QString name;
    /// What differs: the way through the record and, in a document of the wire, the element's path.
    QString path;
    /// Line of the recorded document of the wire; 0 elsewhere.
    qint64 line = 0;
    QString recorded;
    QString replayed;

    /// One sentence.
    QString text() const;
    QJsonObject json() const;
};

namespace recordcomparison {

/// The first difference of every call that differs. What the plug-in sent comes first: its requests
/// and messages in their order, then the order of everything that it asked for, then what it
/// returned and what it wrote into the document. Times taken are not compared.
/// @param replayed as Replay::run returns it
QList<RecordDifference> differences(const Record& recorded, const QList<Record>& replayed);

} // namespace recordcomparison
} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace poshost {

/// What an owner of tables does to a file so that it gets from an older version to this one.
///
/// A file has one version (SQLite's user_version), and all owners count theirs in it: a new step
/// takes the next number, and owners whose steps were released together may share one. A step that
/// has been released is never changed: there are files that took it.
struct SchemaStep
{
    /// That the file has after it, from 1.
    int version = 0;
    /// A table or an index that the owner has in files of this version, until its next step with a
    /// mark, and in none before it: a file whose version and marks do not agree is refused. Empty
    /// where the step makes nothing with a name.
    QString mark;
    /// SQL, run in this order. All steps that a file lacks are taken in one transaction, those of
    /// one version in the order in which their owners were registered, the queue's first.
    QStringList statements;
};

/// Makes the steps of an owner part of every file that is opened from now on; those that it
/// registered before are forgotten. The queue's own are known from the start.
///
/// To be called before the first Database is opened. Any thread; what is open stays as it is.
/// @param owner a name of its own, such as "goods"
/// @param steps sorted by version; none: the owner is forgotten
HOST_EXPORT void registerSchema(const QString& owner, const QList<SchemaStep>& steps);

} // namespace poshost

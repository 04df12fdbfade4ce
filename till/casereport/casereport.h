// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/queue/queueentry.h"
#include "till/checks/check.h"
#include "till/explain/explanation.h"
#include "till/recording/record.h"
#include "till/recording/recordcomparison.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace till {

/// What is known of a case; the record is the least of it.
struct CaseMaterial
{
    Record record;
    /// The closed check and where its amounts come from; nothing when this till has it not, or not
    /// yet closed.
    std::optional<Check> check;
    Explanation explanation;
    /// Why there is no explanation of a check that is there; empty when there is one.
    QString unexplained;
    /// What the queue has of its confirmation; nothing when it has nothing any more.
    std::optional<poshost::QueueContent> message;
    /// What a replay does differently, and why there was none; empty when there was.
    QList<RecordDifference> differences;
    QString notReplayed;
};

namespace casereport {

/// A page of HTML that needs nothing beside it.
/// @param mask as in ReportPage
/// @param language of this program's words
QByteArray html(const CaseMaterial& material, const std::function<QString(const QString&)>& mask,
                const QString& language);

/// Whether a file's content is such a page.
bool isOne(const QByteArray& content);

} // namespace casereport
} // namespace till

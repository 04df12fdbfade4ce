// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/finding.h"

#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace till::doctor {

/// The checks in the order in which they were done, and what each has found.
class Report
{
public:
    struct Row
    {
        QString id;    ///< for programs, the same in every language
        QString title; ///< for people
        Finding finding;
    };

    using Look = std::function<Finding()>;

    /// Does a check. One of those that it needs in the way: it is skipped and names that one, so
    /// that one cause makes one failure.
    /// @param needs identifiers of checks done before
    void check(const QString& id, const QString& title, const QStringList& needs, const Look& look);

    /// Whether none of these checks is in the way of what builds on them.
    bool isClear(const QStringList& ids) const;

    const QList<Row>& rows() const { return done; }
    qsizetype count(Mark mark) const;

    /// A line for each check, under a failing one what mends it, and a line of sums.
    /// @param width how many characters fit on a line; commands and lines to paste stay whole
    QString text(int width = 80) const;
    /// The same of what fails only, without sums; empty when nothing does.
    QString failures(int width = 80) const;
    QString json() const { return QString::fromUtf8(QJsonDocument(toJson()).toJson()); }
    /// The same before it is a text.
    QJsonObject toJson() const;
    /// A report from its JSON, to be read elsewhere: rows and marks are as they were, in the
    /// language that it was made in. Nothing when it is none.
    static std::optional<Report> fromJson(const QByteArray& json);

private:
    const Row* find(const QString& id) const;
    /// The check that must be mended before this one can be done; null when none must.
    const Row* obstacle(const QStringList& needs) const;

    QList<Row> done;
    /// Skipped check -> the failing one that it waits for.
    QHash<QString, QString> causes;
};

} // namespace till::doctor

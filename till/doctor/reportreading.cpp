// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A report that was made elsewhere.

#include "till/doctor/report.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

Mark markOf(const QString& name)
{
    return name == "ok"_L1        ? Mark::Ok
           : name == "warning"_L1 ? Mark::Warning
           : name == "skipped"_L1 ? Mark::Skipped
                                  : Mark::Fails;
}

Mend mendOf(const QJsonObject& row)
{
    const QString kind = row.value("mendKind"_L1).toString();
    const QString place = row.value("mendPlace"_L1).toString();
    Mend mend;
    mend.kind = kind == "command"_L1 ? Mend::Kind::Command
                : kind == "line"_L1  ? Mend::Kind::Line
                : kind == "words"_L1 ? Mend::Kind::Words
                                     : Mend::Kind::None;
    mend.text = row.value("mend"_L1).toString();
    mend.file = row.value("mendFile"_L1).toString();
    mend.place = place == "instead"_L1  ? Mend::Place::Instead
                 : place == "behind"_L1 ? Mend::Place::Behind
                                        : Mend::Place::AtEnd;
    mend.number = row.value("mendLine"_L1).toInt();
    mend.isSafe = row.value("safe"_L1).toBool();
    return mend;
}

} // namespace

std::optional<Report> Report::fromJson(const QByteArray& json)
{
    const QJsonArray checks = QJsonDocument::fromJson(json).object().value("checks"_L1).toArray();
    Report report;
    for (const auto& entry : checks) {
        const QJsonObject row = entry.toObject();
        const Finding finding{markOf(row.value("mark"_L1).toString()),
                              row.value("text"_L1).toString(), mendOf(row), false};
        report.done.append(
            {row.value("id"_L1).toString(), row.value("title"_L1).toString(), finding});
    }
    return report.done.isEmpty() ? std::nullopt : std::optional(report);
}

} // namespace till::doctor

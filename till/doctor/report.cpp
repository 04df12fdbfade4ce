// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/report.h"

#include "console/printable.h"
#include "till/screen/table.h"
#include "till/text.h"

#include <QJsonArray>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

namespace printable = console::printable;

QString markText(Mark mark)
{
    switch (mark) {
    case Mark::Ok:
        return Text::tr("ok");
    case Mark::Warning:
        return Text::tr("warning");
    case Mark::Fails:
        return Text::tr("fails");
    case Mark::Skipped:
        return Text::tr("skipped");
    }
    return {};
}

QString markName(Mark mark)
{
    switch (mark) {
    case Mark::Ok:
        return u"ok"_s;
    case Mark::Warning:
        return u"warning"_s;
    case Mark::Fails:
        return u"fails"_s;
    case Mark::Skipped:
        return u"skipped"_s;
    }
    return {};
}

QString padded(const QString& text, qsizetype width)
{
    return text + QString(std::max<qsizetype>(0, width - Table::widthOf(text)), u' ');
}

/// A text behind what stands to its left. What has no room goes on below itself, or indented where
/// too little is left beside the other. A word stays whole, however wide: paths are copied.
QString aligned(const QString& left, const QString& text, qsizetype width)
{
    constexpr qsizetype leastRoom = 30;
    const QString line = printable::line(text);
    const qsizetype room = width - Table::widthOf(left);
    if (Table::widthOf(line) <= room) {
        return left + line + u'\n';
    }
    const QStringList beside = Table::brokenBetweenWords(line, room);
    const bool isBeside =
        room >= leastRoom && std::all_of(beside.begin(), beside.end(), [room](const QString& row) {
            return Table::widthOf(row) <= room;
        });
    const QString indent(isBeside ? width - room : 4, u' ');
    const QStringList rows =
        isBeside ? beside : Table::brokenBetweenWords(line, width - indent.size());
    QString start = left;
    if (!isBeside) {
        while (start.endsWith(u' ')) {
            start.chop(1);
        }
        start += u'\n' + indent;
    }
    return start + rows.join(u'\n' + indent) + u'\n';
}

/// A line for each, and below it what mends it: commands and lines whole, since they are pasted.
QString linesOf(const QList<Report::Row>& rows, int width)
{
    qsizetype markWidth = 0;
    qsizetype titleWidth = 0;
    for (const Report::Row& row : rows) {
        markWidth = std::max(markWidth, Table::widthOf(markText(row.finding.mark)));
        titleWidth = std::max(titleWidth, Table::widthOf(row.title));
    }
    QString text;
    for (const Report::Row& row : rows) {
        text += aligned(padded(markText(row.finding.mark), markWidth) + u"  "_s +
                            padded(row.title, titleWidth) + u"  "_s,
                        row.finding.text, width);
        const QString indent = QString(markWidth, u' ') + u"  "_s;
        for (const QString& line : row.finding.mend.lines()) {
            text += row.finding.mend.kind == Mend::Kind::Words ? aligned(indent, line, width)
                                                               : indent + line + u'\n';
        }
    }
    return text;
}

} // namespace

void Report::check(const QString& id, const QString& title, const QStringList& needs,
                   const Look& look)
{
    if (const Row* const first = obstacle(needs)) {
        const Row& cause = *find(causes.value(first->id, first->id));
        causes.insert(id, cause.id);
        done.append({id, title, Finding::notDone(Text::tr("\"%1\" comes first").arg(cause.title))});
    } else {
        done.append({id, title, look()});
    }
}

const Report::Row* Report::find(const QString& id) const
{
    const auto row = std::find_if(done.cbegin(), done.cend(),
                                  [&id](const Row& candidate) { return candidate.id == id; });
    return row == done.cend() ? nullptr : &*row;
}

const Report::Row* Report::obstacle(const QStringList& needs) const
{
    for (const QString& id : needs) {
        const Row* const row = find(id);
        if (row != nullptr && row->finding.blocks) {
            return row;
        }
    }
    return nullptr;
}

bool Report::isClear(const QStringList& ids) const
{
    return obstacle(ids) == nullptr;
}

qsizetype Report::count(Mark mark) const
{
    return std::count_if(done.cbegin(), done.cend(),
                         [mark](const Row& row) { return row.finding.mark == mark; });
}

QString Report::text(int width) const
{
    return linesOf(done, width) +
           printable::folded(
               Text::tr("%1 checks: %2 ok, %3 with a warning, %4 failed, %5 skipped.\n")
                   .arg(done.size())
                   .arg(count(Mark::Ok))
                   .arg(count(Mark::Warning))
                   .arg(count(Mark::Fails))
                   .arg(count(Mark::Skipped)),
               width);
}

QString Report::failures(int width) const
{
    QList<Row> failing = done;
    failing.removeIf([](const Row& row) { return row.finding.mark != Mark::Fails; });
    return linesOf(failing, width);
}

QJsonObject Report::toJson() const
{
    QJsonArray checks;
    for (const Row& row : done) {
        const Mend& mend = row.finding.mend;
        checks.append(QJsonObject{{u"id"_s, row.id},
                                  {u"title"_s, row.title},
                                  {u"mark"_s, markName(row.finding.mark)},
                                  {u"text"_s, row.finding.text},
                                  {u"mend"_s, mend.text},
                                  {u"mendKind"_s, mend.kindName()},
                                  {u"mendFile"_s, mend.file},
                                  {u"mendPlace"_s, mend.placeName()},
                                  {u"mendLine"_s, mend.number},
                                  {u"safe"_s, mend.isSafe}});
    }
    return QJsonObject{{u"checks"_s, checks},
                       {u"ok"_s, count(Mark::Ok)},
                       {u"warnings"_s, count(Mark::Warning)},
                       {u"failed"_s, count(Mark::Fails)},
                       {u"skipped"_s, count(Mark::Skipped)}};
}

} // namespace till::doctor

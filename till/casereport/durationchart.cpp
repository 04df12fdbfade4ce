// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/casereport/durationchart_p.h"

#include "till/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr int rowHeight = 22;
constexpr int barHeight = 12;
constexpr int labelWidth = 330;
constexpr int barWidth = 360;
constexpr int figureWidth = 90;

void writeText(ReportPage& page, int x, int y, const QString& text)
{
    const ReportPage::Element label(page, u"text"_s);
    page.attribute(u"x"_s, QString::number(x));
    page.attribute(u"y"_s, QString::number(y + barHeight - 1));
    page.text(text);
}

void writeBar(ReportPage& page, int y, double share, bool isExchange)
{
    const ReportPage::Element bar(page, u"rect"_s, isExchange ? u"exchange"_s : u"call"_s);
    page.attribute(u"x"_s, QString::number(labelWidth));
    page.attribute(u"y"_s, QString::number(y));
    page.attribute(u"width"_s, QString::number(std::max(1.0, share * barWidth), 'f', 1));
    page.attribute(u"height"_s, QString::number(barHeight));
}

} // namespace

void writeDurationChart(ReportPage& page, const QString& title, const QList<Duration>& durations)
{
    double longest = 0;
    for (const Duration& duration : durations) {
        longest = std::max(longest, duration.milliseconds);
    }
    const ReportPage::Element chart(page, u"svg"_s);
    page.attribute(u"role"_s, u"img"_s);
    page.attribute(u"width"_s, QString::number(labelWidth + barWidth + figureWidth));
    page.attribute(u"viewBox"_s, u"0 0 %1 %2"_s.arg(labelWidth + barWidth + figureWidth)
                                     .arg(rowHeight * std::max<qsizetype>(1, durations.size())));
    page.element(u"title"_s, title);
    int y = 4;
    for (const Duration& duration : durations) {
        const double share = longest > 0 ? duration.milliseconds / longest : 0;
        writeText(page, duration.isExchange ? 16 : 0, y, duration.what);
        writeBar(page, y, share, duration.isExchange);
        writeText(page, labelWidth + int(share * barWidth) + 8, y,
                  Text::tr("%1 ms").arg(duration.milliseconds, 0, 'f', 1));
        y += rowHeight;
    }
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/progress.h"

#include "till/screen/output.h"
#include "till/screen/table.h"
#include "till/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

QString figures(qint64 done, qint64 total)
{
    return Text::tr("%1 of %2").arg(done).arg(total);
}

} // namespace

Progress::~Progress()
{
    clear();
}

void Progress::clear()
{
    if (sinceDrawn.isValid()) {
        out.draw({});
        sinceDrawn.invalidate();
    }
}

void Progress::show(qint64 done, qint64 total)
{
    if (out.isQuiet() || total <= 0) {
        return;
    }
    // what came in since the work began is done as well
    const qint64 all = std::max(done, total);
    if (out.canRedraw()) {
        draw(done, all);
    } else {
        tell(done, all);
    }
}

void Progress::draw(qint64 done, qint64 total)
{
    constexpr qint64 leastMilliseconds = 50;
    if (sinceDrawn.isValid() && done < total && !sinceDrawn.hasExpired(leastMilliseconds)) {
        return;
    }
    constexpr qsizetype longest = 40;
    const QString numbers = figures(done, total);
    // the last column stays free: some terminals go to the next line there
    const qsizetype room =
        out.columns() - 1 - Table::widthOf(title) - Table::widthOf(numbers) - u" [] "_s.size();
    const qsizetype width = std::clamp<qsizetype>(room, 0, longest);
    const qsizetype filled = width * done / total;
    out.draw({{title + u" ["_s},
              {QString(filled, u'#'), Output::Colour::Green},
              {QString(width - filled, u'.') + u"] "_s + numbers}});
    sinceDrawn.start();
}

void Progress::tell(qint64 done, qint64 total)
{
    const qint64 tenths = 10 * done / total;
    if (tenths > toldTenths) {
        toldTenths = tenths;
        out.line(title + u": "_s + figures(done, total));
    }
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/returnlines.h"

#include "till/checks/amount.h"
#include "till/failure.h"
#include "till/text.h"

namespace till {
namespace {

/// What the earlier returns of one line took, summed.
Line takenBefore(const QList<Check>& earlier, int position)
{
    Line taken;
    for (const Check& check : earlier) {
        if (const Line* line = check.line(position)) {
            taken.returnedThousandths += line->returnedThousandths;
            taken.sumKopecks += line->sumKopecks;
            taken.discountKopecks += line->discountKopecks;
            taken.givenBackKopecks += line->givenBackKopecks;
            taken.takenBackKopecks += line->takenBackKopecks;
        }
    }
    return taken;
}

void requireReturnable(const Line& sold, const Line& wanted, qint64 returnedBefore)
{
    const qint64 left = sold.thousandths - returnedBefore;
    if (wanted.returnedThousandths > left) {
        throw Failure(
            Text::tr("Position %1: %2 cannot be returned, of %3 sold %4 are left; write a "
                     "smaller quantity.")
                .arg(sold.position)
                .arg(amount::quantityText(wanted.returnedThousandths, sold.fractional),
                     amount::quantityText(sold.thousandths, sold.fractional),
                     amount::quantityText(left, sold.fractional)),
            ExitCode::Usage);
    }
    if (!sold.fractional && wanted.returnedThousandths % 1000 != 0) {
        throw Failure(
            Text::tr("Position %1: pieces are returned in whole numbers.").arg(sold.position),
            ExitCode::Usage);
    }
}

Line returnedPart(const Line& sold, const Line& before, qint64 thousandths)
{
    const qint64 upToNow = before.returnedThousandths + thousandths;
    const auto share = [&](qint64 whole, qint64 taken) {
        return amount::proportion(whole, upToNow, sold.thousandths) - taken;
    };
    Line line = sold;
    line.returnedThousandths = thousandths;
    line.sumKopecks = share(sold.sumKopecks, before.sumKopecks);
    line.discountKopecks = share(sold.discountKopecks, before.discountKopecks);
    line.givenBackKopecks = share(sold.spentKopecks, before.givenBackKopecks);
    line.takenBackKopecks = share(sold.earnedKopecks, before.takenBackKopecks);
    line.spentKopecks = 0;
    line.awardedKopecks = 0;
    line.earnedKopecks = 0;
    return line;
}

} // namespace

QList<Line> returnlines::of(const Check& sale, const QList<Check>& earlier,
                            const QList<Line>& wanted)
{
    QList<Line> lines;
    for (const Line& want : wanted) {
        const Line* sold = sale.line(want.position);
        if (sold == nullptr) {
            throw Failure(Text::tr("Position %1: the sale has no such line; it has %2.")
                              .arg(want.position)
                              .arg(sale.lines.size()),
                          ExitCode::Usage);
        }
        const Line before = takenBefore(earlier, want.position);
        requireReturnable(*sold, want, before.returnedThousandths);
        lines.append(returnedPart(*sold, before, want.returnedThousandths));
    }
    return lines;
}

} // namespace till

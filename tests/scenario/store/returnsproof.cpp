// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/returnsproof.h"

using namespace Qt::StringLiterals;

void TakenBack::addReturn(const till::Check& back)
{
    ++returns;
    for (const till::Line& line : back.lines) {
        Taken& all = taken[back.document->getSaleDocumentId()][line.position];
        all.thousandths += line.returnedThousandths;
        all.sums[0] += line.sumKopecks;
        all.sums[1] += line.discountKopecks;
        all.sums[2] += line.givenBackKopecks;
        all.sums[3] += line.takenBackKopecks;
    }
}

bool TakenBack::isWhole(const QString& sale) const
{
    for (const till::Line& line : sales.value(sale).lines) {
        if (taken.value(sale).value(line.position).thousandths < line.thousandths) {
            return false;
        }
    }
    return true;
}

QStringList TakenBack::complaints() const
{
    QStringList found;
    for (auto it = taken.cbegin(); it != taken.cend(); ++it) {
        if (!sales.contains(it.key())) {
            found.append(u"a return of %1, which nobody has sold"_s.arg(it.key()));
            continue;
        }
        const till::Check sale = sales.value(it.key());
        for (auto line = it->cbegin(); line != it->cend(); ++line) {
            const till::Line* sold = sale.line(line.key());
            const QList<qint64> whole{sold->sumKopecks, sold->discountKopecks, sold->spentKopecks,
                                      sold->earnedKopecks};
            const QString name = u"sale %1, line %2: "_s.arg(it.key()).arg(line.key());
            if (line->thousandths > sold->thousandths) {
                found.append(name +
                             u"%1 of %2 came back"_s.arg(line->thousandths).arg(sold->thousandths));
            } else if (line->thousandths == sold->thousandths && line->sums != whole) {
                found.append(name + u"what was given back is not what was taken"_s);
            }
        }
    }
    return found;
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/returnsproof.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void TakenBack::add(const till::Check& closed)
{
    if (checks[closed.id()]++ > 0) {
        return;
    }
    if (!closed.isReturn()) {
        sales.insert(closed.id(), closed);
        return;
    }
    for (const till::Line& line : closed.lines) {
        Taken& all = taken[closed.document->getSaleDocumentId()][line.position];
        all.thousandths += line.returnedThousandths;
        all.sums[0] += line.sumKopecks;
        all.sums[1] += line.discountKopecks;
        all.sums[2] += line.givenBackKopecks;
        all.sums[3] += line.takenBackKopecks;
    }
}

int TakenBack::whole() const
{
    int count = 0;
    for (const till::Check& sale : sales) {
        const QMap<int, Taken> back = taken.value(sale.id());
        count += std::all_of(sale.lines.cbegin(), sale.lines.cend(), [&](const till::Line& line) {
            return back.value(line.position).thousandths == line.thousandths;
        });
    }
    return count;
}

QStringList TakenBack::complaints() const
{
    QStringList found;
    for (auto check = checks.cbegin(); check != checks.cend(); ++check) {
        if (*check > 1) {
            found.append(u"check %1 is there %2 times"_s.arg(check.key()).arg(*check));
        }
    }
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

QStringList TakenBack::lines() const
{
    QStringList all;
    for (auto it = taken.cbegin(); it != taken.cend(); ++it) {
        for (auto line = it->cbegin(); line != it->cend(); ++line) {
            all.append(u"%1 line %2: %3 pieces, %4 %5 %6 %7"_s.arg(it.key())
                           .arg(line.key())
                           .arg(line->thousandths)
                           .arg(line->sums.at(0))
                           .arg(line->sums.at(1))
                           .arg(line->sums.at(2))
                           .arg(line->sums.at(3)));
        }
    }
    return all;
}

QStringList TakenBack::points() const
{
    QMap<QString, Points> sums;
    for (const till::Check& sale : sales) {
        Points& of = sums[sale.id()];
        of.spent = sale.spentKopecks();
        of.earned = sale.earnedKopecks();
        for (const Taken& line : taken.value(sale.id())) {
            of.givenBack += line.sums.at(2);
            of.takenBack += line.sums.at(3);
        }
    }
    return pointsOf(sums);
}

QStringList TakenBack::pointsOf(const QMap<QString, Points>& sums)
{
    QStringList all;
    for (auto it = sums.cbegin(); it != sums.cend(); ++it) {
        all.append(u"%1 %2 %3 %4 %5"_s.arg(it.key())
                       .arg(it->spent)
                       .arg(it->earned)
                       .arg(it->givenBack)
                       .arg(it->takenBack));
    }
    return all;
}

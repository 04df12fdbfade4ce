// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/nearestname.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace simulator {
namespace {

/// The number of characters to insert, delete or replace to make b of a.
qsizetype distance(const QString& a, const QString& b)
{
    std::vector<qsizetype> row(static_cast<size_t>(b.size()) + 1);
    std::iota(row.begin(), row.end(), qsizetype(0));
    for (qsizetype i = 0; i < a.size(); ++i) {
        qsizetype diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 1; j < row.size(); ++j) {
            const bool same = a[i] == b[static_cast<qsizetype>(j) - 1];
            const qsizetype replaced = diagonal + (same ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

} // namespace

QString nearestName(const QString& name, const QStringList& known)
{
    QString nearest;
    qsizetype least = std::max<qsizetype>(1, name.size() / 3) + 1;
    for (const QString& candidate : known) {
        const qsizetype changes = distance(name.toLower(), candidate.toLower());
        if (changes < least) {
            least = changes;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace simulator

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "input/nearestname.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace input {
namespace {

/// The number of changes to make b of a.
qsizetype distance(const QString& a, const QString& b)
{
    const auto width = static_cast<size_t>(b.size()) + 1;
    std::vector<qsizetype> beforeLast(width);
    std::vector<qsizetype> last(width);
    std::vector<qsizetype> row(width);
    std::iota(row.begin(), row.end(), qsizetype(0));
    for (qsizetype i = 0; i < a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i + 1;
        for (size_t j = 1; j < width; ++j) {
            const auto at = static_cast<qsizetype>(j) - 1;
            row[j] = std::min({last[j - 1] + (a[i] == b[at] ? 0 : 1), last[j] + 1, row[j - 1] + 1});
            if (i > 0 && at > 0 && a[i] == b[at - 1] && a[i - 1] == b[at]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
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

} // namespace input

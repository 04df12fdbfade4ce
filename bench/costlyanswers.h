// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <string>
#include <vector>

/// Answers that cost as much as an answer may: each as large as the guard in front of the parser
/// lets it be.
namespace bench {

struct CostlyAnswer
{
    std::string name;
    /// Takes a while, so it is done only for what is measured.
    std::function<QByteArray()> make;
    /// Whether a till must refuse it: that may cost no more than taking one.
    bool isRefused = false;
};

/// One for each way to be costly, every one at the limits that it strains.
std::vector<CostlyAnswer> answersAtTheLimits();

/// What the fuzzers' kept inputs become when their content is repeated up to the limits.
struct FuzzedAnswers
{
    /// Those that a till takes, costliest first as far as the parser and the writer tell.
    QList<QByteArray> taken;
    /// Those that are refused once they are parsed, costliest first.
    QList<QByteArray> refused;
};

/// Takes minutes. @param folder with the inputs. @param count of each kind, at most
FuzzedAnswers worstOfFuzzers(const QString& folder, qsizetype count);

} // namespace bench

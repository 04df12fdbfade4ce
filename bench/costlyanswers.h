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
};

/// One for each way to be costly, every one at the limits that it strains.
std::vector<CostlyAnswer> answersAtTheLimits();

/// The costliest of the fuzzers' kept inputs, their content repeated up to the limits.
/// @param folder with the inputs. @throws std::runtime_error where there are too few
QList<QByteArray> worstOfFuzzers(const QString& folder, int count);

} // namespace bench

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/explain/explanation.h"

#include <QString>

/// An explanation for people and for programs.
namespace till::explainview {

/// The name of an amount for people, such as "Points earned".
QString nameOf(ExplainedAmount::What what);
QString text(const Check& check, const Explanation& explanation);
QString json(const Check& check, const Explanation& explanation);

} // namespace till::explainview

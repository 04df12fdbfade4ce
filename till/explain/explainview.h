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
/// The name of a document that an amount comes from, such as "answer to the sale".
QString nameOf(AmountSource::Document document);
QString text(const Check& check, const Explanation& explanation);
QString json(const Check& check, const Explanation& explanation);

} // namespace till::explainview

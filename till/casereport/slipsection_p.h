// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/casereport/xmlpane_p.h"
#include "till/checks/check.h"
#include "till/explain/explanation.h"

namespace till {

/// The documents on the page that amounts come from; null where the page does not show one.
struct ShownDocuments
{
    XmlPane* answer = nullptr;
    XmlPane* confirmation = nullptr;
};

/// The slip, and under it how each amount follows. Amounts lead to the elements that they come
/// from, and those lead back.
void writeSlipSection(ReportPage& page, const Check& check, const Explanation& explanation,
                      const ShownDocuments& documents);

} // namespace till

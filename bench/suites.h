// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace bench {

/// Each adds its rows to the table.
void addRequestRows();
void addGrowthRows();
void addLoopbackRows();
void addClosingRows();
void addDrainRows();
void addAllocationRows();
void addConnectionRows();
void addLoadingRows();
void addAnswerRows();

} // namespace bench

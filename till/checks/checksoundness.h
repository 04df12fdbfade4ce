// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace till {

struct Check;

/// Whether a check that was read can be worked with: it has what every check of a till has, and its
/// amounts are such that their sums can be counted. Numbers of the loyalty system that the till
/// only passes on may be anything.
bool isSound(const Check& check);

} // namespace till

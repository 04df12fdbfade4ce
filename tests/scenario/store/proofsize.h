// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QtGlobal>

#include <cstdio>

/// The short form of the proof takes less of everything, and the whole of it a minute and a half.
inline bool isShortProof()
{
    return !qEnvironmentVariableIsSet("ORVA_STORE_LONG");
}

inline int sized(int whole, int small)
{
    return isShortProof() ? small : whole;
}

/// A line of figures, which scripts/prove shows.
inline void printFigure(const QString& line)
{
    std::printf("figure: %s\n", qPrintable(line));
    std::fflush(stdout);
}

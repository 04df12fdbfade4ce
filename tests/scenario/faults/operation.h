// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

#include <ostream>
#include <vector>

class Pair;

/// Something that a till does with the server's help, in the parts between which faults come and
/// go.
struct Operation
{
    const char* name;
    const char* endpoint; ///< whose requests are struck
    bool isDelivery;      ///< nobody waits for it; otherwise the cashier does
    bool isReturn;

    void (*prepare)(Pair& pair); ///< with all well
    void (*strike)(Pair& pair);  ///< under the fault: the call that meets it
    /// Still under the fault: how the till goes on. well: whether the call succeeded
    void (*goOn)(Pair& pair, bool well);

    /// What the books say of it in the end, as "earned,spent,givenBack,takenBack" a check.
    QStringList booksWhenWell;
    QStringList booksWhenStruck;
};

void PrintTo(const Operation& operation, std::ostream* out);

const std::vector<Operation>& operations();

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/erase/customer.h"
#include "till/erase/erasurereport.h"
#include "till/exitcode.h"
#include "till/options.h"

#include <QStringList>

namespace till {

class Output;
class Workplace;

/// The command "erase": forgets a customer. Delivers what tells the server of the customer, takes
/// card and names out of everything that the till keeps, and reports.
class EraseCommand
{
public:
    /// @throws Failure (Usage) when the number cannot be looked for
    EraseCommand(Workplace& place, const Options& given, Output& output);

    /// @return Failed when something is left
    ExitCode run();

private:
    void tellOfLeavings(ErasureReport& report);
    int deliver(const QList<qint64>& messages);
    QStringList folders() const;

    Workplace& workplace;
    const Options& options;
    Output& out;
    Customer customer;
};

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/output.h"
#include "store/commands/options.h"
#include "store/storeclient.h"

namespace orvastore {

/// Does what the command line asks for, with the settings of a file.
class Program
{
public:
    Program(const Options& given, console::Output& output, console::Output& errorOutput)
        : options(given), out(output), errors(errorOutput)
    {}

    /// @return the exit code. Says what went wrong itself.
    int run();

private:
    int obey();
    StoreSettings settings() const;
    int work();
    int migrate();
    int admit();
    int doctor();
    void complain(const poshost::Message& what);

    const Options& options;
    console::Output& out;
    console::Output& errors;
};

} // namespace orvastore

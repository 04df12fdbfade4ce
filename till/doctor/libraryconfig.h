// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/mend.h"

#include <QString>
#include <QStringList>

namespace till::doctor {

/// Where the Log4Qt library will write the lines of the logger "orva", found out from its
/// configuration alone: asking the library would have it open its appenders, and one that is not
/// told to append cuts the log of the till at work to nothing.
struct LibraryConfig
{
    QString file;             ///< that the library reads; empty: it finds none
    QStringList targets;      ///< files, or an appender's kind where it is none
    QString cutFile;          ///< the first of these that every start of a till empties
    bool switchedOff = false; ///< the logger's level lets nothing through
    Mend mend;                ///< the line that has the library append to the file, or write at all

    /// Looks where the library looks, the environment first.
    static LibraryConfig find();
};

/// Keeps the library, once it is loaded, from reading its configuration in this process and in what
/// it starts. The library reads the environment when it is loaded: where it has been by now, the
/// program begins anew.
void keepLibraryUnconfigured(char** arguments);

} // namespace till::doctor

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/databasefile_p.h"

#include "host/core/basicexception.h"
#include "host/database/databaseerror_p.h"

#include <QFileInfo>

namespace poshost {

using namespace Qt::StringLiterals;

namespace databasefile {

void requireNotEmptied(const QString& file)
{
    constexpr qint64 logHeaderBytes = 32;
    constexpr qint64 emptyBytes = 1; // SQLite itself calls a file of one byte empty
    // the log first: a file that another process begins meanwhile is written before its log
    const bool hasFrames = QFileInfo(file + u"-wal"_s).size() > logHeaderBytes;
    if (hasFrames && QFileInfo(file).size() <= emptyBytes) {
        throw BasicException(databaseerror::emptied(file));
    }
}

} // namespace databasefile

} // namespace poshost

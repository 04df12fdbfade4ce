// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/ledger/database.h"

#include "console/language.h"
#include "host/core/basicexception.h"
#include "host/database/databasefailure.h"
#include "simulator/ledger/schema.h"
#include "simulator/text.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

using HostDatabase = poshost::Database;

constexpr int busyMilliseconds = 10'000;

/// The file, which is there or may be made.
QString usable(const QString& path, Database::Open mode)
{
    if (QFileInfo::exists(path)) {
        return path;
    }
    if (mode == Database::Open::ExistingOnly) {
        throw DatabaseError(Text::tr("There is no database %1: start orva-simulator first or name "
                                     "another file with --database")
                                .arg(path));
    }
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder)) {
        throw DatabaseError(Text::tr("The folder %1 for the database cannot be made").arg(folder));
    }
    return path;
}

} // namespace

DatabaseError::DatabaseError(const poshost::DatabaseFailure& failure)
    : DatabaseError(u"The database %1 refused a statement: %2"_s.arg(failure.file(),
                                                                     failure.cause().simplified()))
{}

Database::Database(const QString& path, Open mode)
try : HostDatabase(usable(path, mode), prepareBooks, busyMilliseconds) {
} catch (const poshost::DatabaseFailure& failure) {
    throw DatabaseError(Text::tr("The database %1 cannot be opened: %2")
                            .arg(failure.file(), failure.cause().simplified()));
} catch (const BasicException& error) {
    throw DatabaseError(error.tr().message().in(
        console::spokenLanguage() == "ru"_L1
            ? poshost::Language::Russian
            : poshost::Language::English)); // a file that must not be opened
}

} // namespace simulator

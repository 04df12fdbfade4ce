// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/archive/checkarchive.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/database/transaction.h"
#include "till/failure.h"
#include "till/text.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr QDir::Filters onlyFiles = QDir::Files | QDir::NoDotAndDotDot;
const QString ending = u".checks"_s;

/// As many rights for the folder as the database's file has, and the right to enter it. A group has
/// it whole: with the set-group-ID bit, by which what is made in it belongs to that group too.
mode_t folderRights(const QString& databaseFile)
{
    const bool isShared = poshost::Database::rightsOf(databaseFile).testFlag(QFile::WriteGroup);
    return S_IRWXU | (isShared ? S_ISGID | S_IRWXG : 0);
}

/// Whatever the mask of the process, which decides about mkdir.
bool make(const QByteArray& folder, mode_t rights)
{
    return ::mkdir(folder.constData(), S_IRWXU) == 0 && ::chmod(folder.constData(), rights) == 0;
}

/// Another account may look just then: the folder gets its name once it has its rights. Does
/// nothing where another process was quicker.
bool makeForOthers(const QByteArray& folder, mode_t rights)
{
    const QByteArray unnamed = folder + ".new-" + QByteArray::number(::getpid());
    ::rmdir(unnamed.constData()); // of a process that was killed
    const bool made =
        make(unnamed, rights) && ::rename(unnamed.constData(), folder.constData()) == 0;
    if (!made) {
        ::rmdir(unnamed.constData());
    }
    return made;
}

void makeFolder(const QString& folder, const QString& databaseFile)
{
    if (QFileInfo(folder).isDir()) {
        return;
    }
    const mode_t rights = folderRights(databaseFile);
    const QByteArray name = QFile::encodeName(folder);
    const bool made = rights == S_IRWXU ? make(name, rights) : makeForOthers(name, rights);
    if (!made && !QFileInfo(folder).isDir()) {
        throw Failure(Text::tr("The folder %1 cannot be made; see to the rights of the one that "
                               "it stands in.")
                          .arg(folder));
    }
    archivefile::syncNameOf(folder);
}

} // namespace

QString CheckArchive::folder() const
{
    return database.fileName() + u"-archive"_s;
}

QString CheckArchive::lockFile() const
{
    makeFolder(folder(), database.fileName());
    return folder() + u"/lock"_s;
}

QString CheckArchive::pathOf(const Month& month) const
{
    return folder() + u'/' + month.file;
}

QList<CheckArchive::Month> CheckArchive::months()
{
    QList<Month> found;
    poshost::Statement statement(database, u"SELECT month, file, length, checks FROM archives "
                                           "ORDER BY month"_s);
    while (statement.next()) {
        found.append({statement.value(0).toString(), statement.value(1).toString(),
                      statement.value(2).toLongLong(), statement.value(3).toInt()});
    }
    return found;
}

void CheckArchive::forEachListed(const std::function<bool(const ArchivedCheck&)>& take)
{
    const QList<Month> all = months();
    for (auto month = all.crbegin(); month != all.crend(); ++month) {
        QList<ArchivedCheck> listed;
        for (archivefile::Reader reader(pathOf(*month), month->length); reader.next();) {
            listed += reader.list();
        }
        std::stable_sort(listed.begin(), listed.end(),
                         [](const ArchivedCheck& left, const ArchivedCheck& right) {
                             return left.updatedAt < right.updatedAt;
                         });
        for (auto check = listed.crbegin(); check != listed.crend(); ++check) {
            if (!take(*check)) {
                return;
            }
        }
    }
}

void CheckArchive::forEach(const std::function<bool(const ArchivedCheck&)>& take)
{
    const QList<Month> all = months();
    for (const Month& month : all) {
        for (archivefile::Reader reader(pathOf(month), month.length); reader.next();) {
            const QList<ArchivedCheck> checks = reader.whole();
            if (!std::all_of(checks.cbegin(), checks.cend(), take)) {
                return;
            }
        }
    }
}

QList<ArchivedCheck> CheckArchive::find(const std::function<bool(const ArchivedCheck&)>& wanted)
{
    QList<ArchivedCheck> found;
    const QList<Month> all = months();
    for (const Month& month : all) {
        for (archivefile::Reader reader(pathOf(month), month.length); reader.next();) {
            const QList<ArchivedCheck>& list = reader.list();
            if (std::any_of(list.cbegin(), list.cend(), wanted)) {
                const QList<ArchivedCheck> whole = reader.whole();
                std::copy_if(whole.cbegin(), whole.cend(), std::back_inserter(found), wanted);
            }
        }
    }
    return found;
}

CheckArchive::Month CheckArchive::write(const QString& month, const QList<ArchivedCheck>& checks)
{
    makeFolder(folder(), database.fileName());
    const QList<Month> known = months();
    const auto same = std::find_if(known.cbegin(), known.cend(),
                                   [&](const Month& other) { return other.month == month; });
    Month written = same != known.cend() ? *same : Month{month, month + ending, 0, 0};
    written.length = archivefile::append(pathOf(written), written.length, checks);
    written.checks += int(checks.size());
    return written;
}

void CheckArchive::countIn(const Month& month)
{
    poshost::Statement statement(
        database, u"INSERT INTO archives (month, file, length, checks) VALUES (?, ?, ?, ?) "
                  "ON CONFLICT (month) DO UPDATE SET file = excluded.file, "
                  "length = excluded.length, checks = excluded.checks"_s);
    statement.bind(month.month).bind(month.file).bind(month.length).bind(month.checks).execute();
}

int CheckArchive::rewrite(const std::function<bool(ArchivedCheck&)>& change)
{
    int changed = 0;
    const QList<Month> all = months();
    for (const Month& month : all) {
        bool isDue = false;
        for (archivefile::Reader reader(pathOf(month), month.length); !isDue && reader.next();) {
            QList<ArchivedCheck> checks = reader.whole();
            isDue = std::any_of(checks.begin(), checks.end(), change);
        }
        changed += isDue ? rewriteMonth(month, change) : 0;
    }
    removeLeftovers();
    return changed;
}

int CheckArchive::rewriteMonth(const Month& month,
                               const std::function<bool(ArchivedCheck&)>& change)
{
    // never over the file that counts: another name, and the table says which one it is
    const bool isFirst = month.file == month.month + ending;
    Month written{month.month, month.month + (isFirst ? u"-anew"_s : QString()) + ending, 0,
                  month.checks};
    int changed = 0;
    for (archivefile::Reader reader(pathOf(month), month.length); reader.next();) {
        QList<ArchivedCheck> checks = reader.whole();
        changed += int(std::count_if(checks.begin(), checks.end(), change));
        written.length = archivefile::append(pathOf(written), written.length, checks);
    }
    poshost::Transaction transaction(database);
    countIn(written);
    transaction.commit();
    return changed;
}

void CheckArchive::removeLeftovers()
{
    QStringList counted;
    const QList<Month> all = months();
    for (const Month& month : all) {
        counted.append(month.file);
    }
    const QStringList names = QDir(folder()).entryList({u'*' + ending}, onlyFiles);
    for (const QString& name : names) {
        if (!counted.contains(name)) {
            QFile::remove(folder() + u'/' + name);
        }
    }
}

} // namespace till

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/init/plan.h"

#include "host/services/config.h"
#include "input/readfile.h"
#include "till/failure.h"
#include "till/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::init {
namespace {

constexpr auto hidden = "***"_L1;
constexpr qint64 longestSecret = 4096;

QString absolute(const QString& path, const QString& configFile)
{
    return QFileInfo(configFile).absoluteDir().absoluteFilePath(path);
}

Failure cannotBeWritten(const QString& path, int cause)
{
    return Failure(Text::tr("%1 cannot be written (%2); check the folder and who you are.")
                       .arg(path, QString::fromLocal8Bit(std::strerror(cause))));
}

/// A folder that is shared with its group makes its files the group's, who then may read them.
mode_t rightsIn(const QString& folder)
{
    struct stat information
    {};
    const bool shared = ::stat(QFile::encodeName(folder).constData(), &information) == 0 &&
                        (information.st_mode & S_ISGID) != 0 &&
                        (information.st_mode & S_IRWXO) == 0;
    return S_IRUSR | S_IWUSR | (shared ? S_IRGRP : 0);
}

/// @return false: it is there already
bool writeNew(const QString& path, const QByteArray& content)
{
    const mode_t rights = rightsIn(QFileInfo(path).absolutePath());
    const int descriptor = ::open(QFile::encodeName(path).constData(),
                                  O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0 && errno == EEXIST) {
        return false;
    }
    QFile target;
    if (descriptor < 0 || ::fchmod(descriptor, rights) != 0 ||
        !target.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle)) {
        throw cannotBeWritten(path, errno);
    }
    if (target.write(content) != content.size() || !target.flush() || ::fsync(descriptor) != 0) {
        const int cause = errno;
        target.remove(); // half a file would be in the way of the next time
        throw cannotBeWritten(path, cause);
    }
    return true;
}

} // namespace

Plan::Plan(const QString& configFile, const Settings& settings)
    : file(QFileInfo(configFile).absoluteFilePath()), entries(entriesOf(settings))
{}

bool Plan::isWritten() const
{
    return QFile::exists(file);
}

QString Plan::fileOf(const Entry& secret) const
{
    return absolute(secret.key, file);
}

QList<Change> Plan::changes() const
{
    return isWritten() ? changesInConfig() : changesInSecrets();
}

QList<Change> Plan::changesInConfig() const
{
    Config config;
    config.load(file);
    QList<Change> changes;
    for (const Entry& entry : entries) {
        const QString before = config.getString(entry.table + u':' + entry.key, QString());
        const QString after = entry.isPath ? absolute(entry.value, file) : entry.value;
        if (before != after) {
            const auto shown = [&](const QString& value) {
                return entry.isSecret && !value.isEmpty() ? QString(hidden) : value;
            };
            changes.append({u"[%1] %2"_s.arg(entry.table, entry.key), shown(before), shown(after)});
        }
    }
    return changes;
}

QList<Change> Plan::changesInSecrets() const
{
    QList<Change> changes;
    for (const Entry& entry : entries) {
        const QString path = fileOf(entry);
        if (entry.isSecret && QFile::exists(path)) {
            QByteArray content;
            try {
                content = input::readFile(path, longestSecret);
            } catch (const input::FileError&) {
                content.clear(); // whatever it is, it is not that secret
            }
            if (content.trimmed() != entry.value.toUtf8()) {
                changes.append({path, hidden, hidden});
            }
        }
    }
    return changes;
}

QStringList Plan::makeFolders() const
{
    QStringList made;
    QStringList folders{QFileInfo(file).absolutePath()};
    for (const Entry& entry : entries) {
        if (entry.isPath) {
            folders.append(QFileInfo(absolute(entry.value, file)).absolutePath());
        }
    }
    for (const QString& folder : folders) {
        if (QFileInfo(folder).isDir()) {
            continue;
        }
        if (!QDir().mkpath(folder) ||
            ::chmod(QFile::encodeName(folder).constData(), S_IRWXU) != 0) {
            throw cannotBeWritten(folder, errno);
        }
        made.append(folder);
    }
    return made;
}

QStringList Plan::write() const
{
    QStringList made = makeFolders();
    for (const Entry& entry : entries) {
        if (entry.isSecret && writeNew(fileOf(entry), entry.value.toUtf8() + '\n')) {
            made.append(fileOf(entry));
        }
    }
    if (writeNew(file, toToml(entries, Secrets::InFiles))) {
        made.append(file);
    }
    return made;
}

} // namespace till::init

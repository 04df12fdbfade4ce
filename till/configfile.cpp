// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/configfile.h"

#include <QFile>

#include <cerrno>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::configfile {
namespace {

/// Who may not look into the folder is told so by who reads the file, and not that there is none.
bool mayBeThere(const QString& file)
{
    return ::access(QFile::encodeName(file).constData(), F_OK) == 0 || errno == EACCES;
}

} // namespace

QString local()
{
    return u"orva.toml"_s;
}

QString ofMachine()
{
    return u"/etc/orva/orva.toml"_s;
}

QString found(const QString& machine)
{
    if (QFile::exists(local())) {
        return local();
    }
    return mayBeThere(machine) ? machine : QString();
}

} // namespace till::configfile

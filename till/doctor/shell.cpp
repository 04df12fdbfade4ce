// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/shell.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::doctor {

QString shell::word(const QString& text)
{
    static const QRegularExpression plain(u"^[A-Za-z0-9_@%+:,./-]+$"_s);
    if (plain.match(text).hasMatch()) {
        return text;
    }
    QString inside = text;
    return u"'"_s + inside.replace(u'\'', u"'\\''"_s) + u"'"_s;
}

QString shell::words(const QStringList& texts)
{
    QStringList quoted;
    for (const QString& text : texts) {
        quoted.append(word(text));
    }
    return quoted.join(u' ');
}

QString shell::chmod(const QString& rights, const QStringList& files)
{
    return words(QStringList{u"chmod"_s, rights} + files);
}

QString shell::sed(const QStringList& scripts, const QString& file)
{
    QStringList arguments{u"sed"_s, u"-i"_s, u"--follow-symlinks"_s};
    for (const QString& script : scripts) {
        arguments << u"-e"_s << script;
    }
    return words(arguments << file);
}

bool shell::isOwn(const QString& file)
{
    struct stat information
    {};
    return ::stat(QFile::encodeName(file).constData(), &information) == 0 &&
           (::geteuid() == 0 || information.st_uid == ::geteuid());
}

QString shell::ownerOf(const QString& file)
{
    return QFileInfo(file).owner();
}

QString shell::account()
{
    const passwd* const entry = ::getpwuid(::geteuid());
    return entry == nullptr ? QString::number(::geteuid()) : QString::fromLocal8Bit(entry->pw_name);
}

} // namespace till::doctor

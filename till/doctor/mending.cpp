// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/mending.h"

#include "console/printable.h"
#include "input/readfile.h"
#include "input/tomlguard.h"
#include "till/reason.h"
#include "till/text.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonObject>
#include <QProcess>
#include <QSaveFile>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

namespace printable = console::printable;

constexpr int longestCommand = 10'000;

/// A mend was not applied; the sentence says why.
struct NotMended
{
    QString reason;
};

/// Beside the file, under a name that nobody has.
QString copyOf(const QString& file)
{
    const QString stem =
        file + u".before-"_s + QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
    QString name = stem;
    for (int number = 2; QFileInfo::exists(name); ++number) {
        name = u"%1-%2"_s.arg(stem).arg(number);
    }
    QFile source(file);
    if (!source.copy(name)) {
        throw NotMended{Text::tr("%1 cannot be written (%2)").arg(name, reasonOf(source))};
    }
    // whatever the rights of the file were, it may hold a secret
    QFile::setPermissions(name, QFile::permissions(name) &
                                    ~(QFile::ReadOther | QFile::WriteOther | QFile::ExeOther));
    return name;
}

void run(const QString& command)
{
    QProcess shell;
    shell.start(u"/bin/sh"_s, {u"-c"_s, command});
    shell.closeWriteChannel();
    if (!shell.waitForFinished(longestCommand) || shell.exitStatus() != QProcess::NormalExit ||
        shell.exitCode() != 0) {
        const QString said = QString::fromLocal8Bit(shell.readAllStandardError()).trimmed();
        shell.kill();
        shell.waitForFinished();
        throw NotMended{said.isEmpty() ? shell.errorString() : said};
    }
}

/// The new content in the place of the old, with the same owner and rights.
void putLine(const Mend& mend)
{
    try {
        const QByteArray content = input::readFile(mend.file, input::maximumTomlBytes);
        struct stat before
        {};
        QSaveFile target(mend.file);
        const bool isOpen = ::stat(QFile::encodeName(mend.file).constData(), &before) == 0 &&
                            target.open(QIODevice::WriteOnly);
        // a group that cannot be given back would be kept out, or another one let in
        if (!isOpen || ::fchown(target.handle(), before.st_uid, before.st_gid) != 0 ||
            ::fchmod(target.handle(), before.st_mode & 07777) != 0) {
            throw NotMended{Text::tr("%1 cannot be written (%2)")
                                .arg(mend.file, isOpen ? qt_error_string() : target.errorString())};
        }
        target.write(mend.appliedTo(content));
        if (!target.commit()) {
            throw NotMended{
                Text::tr("%1 cannot be written (%2)").arg(mend.file, target.errorString())};
        }
    } catch (const input::FileError& error) {
        throw NotMended{Text::tr("%1 cannot be read").arg(mend.file) + u": "_s + error.reason()};
    }
}

Mending::Deed applied(const QString& id, const Mend& mend)
{
    Mending::Deed deed{id, mend, {}, {}};
    try {
        if (!mend.file.isEmpty()) {
            deed.copy = copyOf(mend.file);
        }
        if (mend.kind == Mend::Kind::Line) {
            putLine(mend);
        } else {
            run(mend.text);
        }
    } catch (const NotMended& failure) {
        deed.reason = failure.reason;
    }
    return deed;
}

QString textOf(const Mending::Deed& deed)
{
    QString text =
        (deed.reason.isEmpty() ? Text::tr("mended:")
                               : Text::tr("not mended (%1):").arg(printable::line(deed.reason))) +
        u'\n';
    for (const QString& line : deed.mend.lines()) {
        text += u"  "_s + line + u'\n';
    }
    if (!deed.copy.isEmpty()) {
        text += u"  "_s + Text::tr("as it was: %1").arg(printable::line(deed.copy)) + u'\n';
    }
    return text;
}

} // namespace

bool Mending::applyNext(const Report& report)
{
    for (const Report::Row& row : report.rows()) {
        const Mend& mend = row.finding.mend;
        const QString name = mend.lines().join(u'\n');
        if (mend.isSafe && !tried.contains(name)) {
            tried.insert(name);
            done.append(applied(row.id, mend));
            return true;
        }
    }
    return false;
}

QString Mending::text() const
{
    QString text;
    for (const Deed& deed : done) {
        text += textOf(deed);
    }
    return text;
}

QString Mending::failures() const
{
    QString text;
    for (const Deed& deed : done) {
        text += deed.reason.isEmpty() ? QString() : textOf(deed);
    }
    return text;
}

QJsonArray Mending::json() const
{
    QJsonArray array;
    for (const Deed& deed : done) {
        array.append(QJsonObject{{u"id"_s, deed.id},
                                 {u"mend"_s, deed.mend.text},
                                 {u"file"_s, deed.mend.file},
                                 {u"copy"_s, deed.copy},
                                 {u"applied"_s, deed.reason.isEmpty()},
                                 {u"reason"_s, deed.reason}});
    }
    return array;
}

} // namespace till::doctor

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/support/supportarchive.h"

#include "input/readfile.h"
#include "till/failure.h"
#include "till/text.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

const QString supportFormat = u"orva-till support"_s;

[[noreturn]] void refuseArchive(const QString& fileName, const QString& reason)
{
    throw Failure(Text::tr("%1 is no support archive that can be used (%2); have it made again.")
                      .arg(fileName, reason),
                  ExitCode::Usage);
}

QByteArray archiveBytes(const QString& fileName)
{
    using Kind = input::FileError::Kind;
    try {
        return input::readFile(fileName, SupportArchive::largest);
    } catch (const input::FileError& error) {
        refuseArchive(fileName,
                      error.kind() == Kind::Unreadable ? error.reason()
                      : error.kind() == Kind::TooLarge
                          ? Text::tr("it has more than %1 bytes").arg(SupportArchive::largest)
                          : Text::tr("it is no regular file"));
    }
}

} // namespace

QByteArray SupportArchive::content(const QString& name) const
{
    const auto member =
        std::find_if(members.cbegin(), members.cend(),
                     [&name](const TarMember& candidate) { return candidate.name == name; });
    return member == members.cend() ? QByteArray() : member->content;
}

QList<TarMember> SupportArchive::in(const QString& folder) const
{
    QList<TarMember> found = members;
    found.removeIf(
        [&folder](const TarMember& member) { return !member.name.startsWith(folder + u'/'); });
    return found;
}

QByteArray SupportArchive::written() const
{
    QJsonObject head = about;
    head.insert("format"_L1, supportFormat);
    head.insert("version"_L1, version);
    const QList<TarMember> first{{supportfiles::about, QJsonDocument(head).toJson()}};
    return tararchive::written(first + members, QDateTime::currentDateTime());
}

bool SupportArchive::isLikeOne(const QString& fileName)
{
    constexpr qint64 enough = 512;
    QFile file(fileName);
    // not asked of a pipe, which would wait for its writer
    return QFileInfo(fileName).isFile() && file.open(QIODevice::ReadOnly) &&
           tararchive::isOne(file.read(enough));
}

SupportArchive SupportArchive::read(const QString& fileName)
{
    return parse(archiveBytes(fileName), fileName);
}

SupportArchive SupportArchive::parse(const QByteArray& bytes, const QString& fileName)
{
    SupportArchive archive;
    try {
        archive.members = tararchive::read(bytes);
    } catch (const tararchive::Unreadable& reason) {
        refuseArchive(fileName, QString::fromUtf8(reason.what()));
    }
    if (!archive.members.isEmpty() && archive.members.first().name == supportfiles::about) {
        archive.about = QJsonDocument::fromJson(archive.members.takeFirst().content).object();
    }
    if (archive.about.value("format"_L1).toString() != supportFormat) {
        refuseArchive(fileName, Text::tr("a till has not made it"));
    }
    if (archive.about.value("version"_L1).toInt() > version) {
        refuseArchive(fileName, Text::tr("a newer till has made it, and can read it"));
    }
    return archive;
}

} // namespace till

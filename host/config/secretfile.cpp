// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/secretfile_p.h"

#include "input/readfile.h"

#include <QFile>
#include <QStringDecoder>

namespace poshost {

using namespace Qt::StringLiterals;

namespace secretfile {

namespace {

/// Far above any password; what is longer is another file.
constexpr qint64 longestSecret = 4096;

QByteArray contentOf(const QString& fileName)
{
    try {
        return input::readFile(fileName, longestSecret);
    } catch (const input::FileError& error) {
        switch (error.kind()) {
        case input::FileError::Kind::NotRegular:
            throw Error(Message::of("secret.notRegular", fileName));
        case input::FileError::Kind::TooLarge:
            throw Error(Message::of("secret.tooLong", fileName, longestSecret));
        case input::FileError::Kind::Unreadable:
            break;
        }
        throw Error(Message::of("secret.unreadable", fileName, error.reason()));
    }
}

QByteArray withoutLineEnd(QByteArray line)
{
    for (const char end : {'\n', '\r'}) {
        if (line.endsWith(end)) {
            line.chop(1);
        }
    }
    return line;
}

} // namespace

QString read(const QString& fileName)
{
    const QByteArray line = withoutLineEnd(contentOf(fileName));
    if (line.contains('\n')) {
        throw Error(Message::of("secret.lines", fileName));
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString secret = decoder(line);
    if (decoder.hasError()) {
        throw Error(Message::of("secret.encoding", fileName));
    }
    return secret;
}

Message complaintAboutRights(const QString& fileName)
{
    constexpr QFile::Permissions tooMuch =
        QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    if ((QFile::permissions(fileName) & tooMuch) == QFile::Permissions()) {
        return {};
    }
    return Message::of("secret.rights", fileName);
}

} // namespace secretfile

} // namespace poshost

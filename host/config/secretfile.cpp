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
            throw Error(u"%1 не обычный файл; укажите файл с одной строкой"_s.arg(fileName));
        case input::FileError::Kind::TooLarge:
            throw Error(u"файл %1 длиннее %2 байт"_s.arg(fileName).arg(longestSecret));
        case input::FileError::Kind::Unreadable:
            break;
        }
        throw Error(u"файл %1 не читается (%2)"_s.arg(fileName, error.reason()));
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
        throw Error(u"в файле %1 больше одной строки"_s.arg(fileName));
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString secret = decoder(line);
    if (decoder.hasError()) {
        throw Error(u"файл %1 не в кодировке UTF-8"_s.arg(fileName));
    }
    return secret;
}

QString complaintAboutRights(const QString& fileName)
{
    constexpr QFile::Permissions tooMuch =
        QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    if ((QFile::permissions(fileName) & tooMuch) == QFile::Permissions()) {
        return {};
    }
    return u"%1: файл с паролем доступен другим пользователям; закройте доступ (chmod g-w,o= %1)"_s
        .arg(fileName);
}

} // namespace secretfile

} // namespace poshost

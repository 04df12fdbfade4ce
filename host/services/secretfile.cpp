// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/secretfile.h"

#include <QFile>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace secretfile {

namespace {

/// Far above any password; what is longer is another file.
constexpr qint64 longestSecret = 4096;

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
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Error(u"файл %1 не читается (%2)"_s.arg(fileName, file.errorString()));
    }
    const QByteArray content = file.read(longestSecret + 1);
    if (content.size() > longestSecret) {
        throw Error(u"файл %1 длиннее %2 байт"_s.arg(fileName).arg(longestSecret));
    }
    const QByteArray line = withoutLineEnd(content);
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
    return u"%1: файл с паролем доступен другим пользователям; закройте доступ (chmod 600 %1)"_s
        .arg(fileName);
}

} // namespace secretfile

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/databaseerror_p.h"

#include <cstring>
#include <sqlite3.h>

namespace poshost {

using namespace Qt::StringLiterals;

namespace databaseerror {

namespace {

tr::Tr databaseError(const QString& file, const QString& what)
{
    return {u"databaseError"_s, u"База данных %1: %2"_s.arg(file, what)};
}

QString advice(int resultCode)
{
    switch (resultCode) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return u"; файл занят другой программой, повторите позже"_s;
    case SQLITE_READONLY:
        return u"; файл или папка только для чтения, проверьте права"_s;
    case SQLITE_IOERR:
        return u"; диск не читается или не пишется, проверьте его"_s;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return u"; файл повреждён или это не база данных, восстановите его из копии"_s;
    case SQLITE_FULL:
        return u"; освободите место на диске"_s;
    case SQLITE_CANTOPEN:
        return u"; проверьте путь и права на папку"_s;
    case SQLITE_NOMEM:
        return u"; не хватает памяти, закройте другие программы"_s;
    default:
        return u"; содержимое файла не такое, какого ждёт программа, проверьте файл"_s;
    }
}

} // namespace

tr::Tr fromSql(const QString& file, int resultCode, const QString& cause)
{
    constexpr int primaryCodeMask = 0xff;
    return databaseError(file, cause + advice(resultCode & primaryCodeMask));
}

tr::Tr fromSystem(const QString& file, int systemError)
{
    return databaseError(file, u"%1; проверьте путь и права"_s.arg(
                                   QString::fromLocal8Bit(std::strerror(systemError))));
}

tr::Tr leftInTheMiddle(const QString& file)
{
    return databaseError(
        file,
        u"касса остановлена во время записи, а файла -shm рядом нет; запустите кассу один раз"_s);
}

tr::Tr damaged(const QString& file, const QString& said)
{
    // the first line only names the part of the connection that was checked
    const QString cause = said.startsWith("***"_L1) ? said.section(u'\n', 1) : said;
    return fromSql(file, SQLITE_CORRUPT, cause.simplified());
}

tr::Tr tooNew(const QString& file, int fileVersion, int knownVersion)
{
    return databaseError(
        file, u"файл записан более новой программой (схема %1, известна %2); обновите программу"_s
                  .arg(fileVersion)
                  .arg(knownVersion));
}

tr::Tr wrongVersion(const QString& file, int fileVersion)
{
    return databaseError(
        file,
        u"номер схемы %1 не подходит к таблицам файла: он повреждён или это база "
        "другой программы; восстановите файл из копии или назовите другой"_s.arg(fileVersion));
}

tr::Tr emptied(const QString& file)
{
    return databaseError(file,
                         u"файл пуст или удалён, а рядом остался его журнал с записями (-wal); "
                         "сохраните оба и восстановите файл из копии"_s);
}

tr::Tr transactionFailed(const QString& file)
{
    return databaseError(file,
                         u"операция отменена из-за предыдущей ошибки; повторите её целиком"_s);
}

} // namespace databaseerror

} // namespace poshost

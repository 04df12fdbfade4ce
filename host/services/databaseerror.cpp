// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/databaseerror.h"

#include <cstring>

using namespace Qt::StringLiterals;

namespace databaseerror {

namespace {

tr::Tr databaseError(const QString& file, const QString& what)
{
    return {u"databaseError"_s, u"База данных %1: %2"_s.arg(file, what)};
}

constexpr int busyCode = 5;

/// SQLite's primary result code.
int codeOf(const QSqlError& error)
{
    constexpr int primaryCodeMask = 0xff;
    return error.nativeErrorCode().toInt() & primaryCodeMask;
}

QString advice(int resultCode)
{
    switch (resultCode) {
    case busyCode:
    case 6:
        return u"; файл занят другой программой, повторите позже"_s;
    case 8:
        return u"; файл или папка только для чтения, проверьте права"_s;
    case 10:
        return u"; диск не читается или не пишется, проверьте его"_s;
    case 11:
    case 26:
        return u"; файл повреждён или это не база данных, восстановите его из копии"_s;
    case 13:
        return u"; освободите место на диске"_s;
    case 14:
        return u"; проверьте путь и права на папку"_s;
    default:
        return {};
    }
}

} // namespace

bool isBusy(const QSqlError& error)
{
    return codeOf(error) == busyCode;
}

tr::Tr fromSql(const QString& file, const QSqlError& error)
{
    const QString cause =
        error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return databaseError(file, cause + advice(codeOf(error)));
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

tr::Tr tooNew(const QString& file, int fileVersion, int knownVersion)
{
    return databaseError(
        file, u"файл записан более новой программой (схема %1, известна %2); обновите программу"_s
                  .arg(fileVersion)
                  .arg(knownVersion));
}

tr::Tr transactionFailed(const QString& file)
{
    return databaseError(file,
                         u"операция отменена из-за предыдущей ошибки; повторите её целиком"_s);
}

} // namespace databaseerror

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/wordings_p.h"

#include <algorithm>
#include <array>

namespace poshost::wordings {

namespace {

/// Side by side, so that who changes a sentence sees it in the other language. A code that a
/// version has stored in a database stays.
constexpr std::array all{
    Wording{"database", "База данных %1: %2", "Database %1: %2"},
    Wording{"database.busy", "%1; файл занят другой программой, повторите позже",
            "%1; the file is in use by another program, try again later"},
    Wording{"database.readOnly", "%1; файл или папка только для чтения, проверьте права",
            "%1; the file or its folder is read-only, look at the permissions"},
    Wording{"database.disk", "%1; диск не читается или не пишется, проверьте его",
            "%1; the disk cannot be read or written, check it"},
    Wording{"database.damaged",
            "%1; файл повреждён или это не база данных, восстановите его из копии",
            "%1; the file is damaged or no database, restore it from a copy"},
    Wording{"database.full", "%1; освободите место на диске", "%1; free some space on the disk"},
    Wording{"database.cannotOpen", "%1; проверьте путь и права на папку",
            "%1; check the path and the permissions of the folder"},
    Wording{"database.noMemory", "%1; не хватает памяти, закройте другие программы",
            "%1; there is not enough memory, close other programs"},
    Wording{"database.unexpected",
            "%1; содержимое файла не такое, какого ждёт программа, проверьте файл",
            "%1; the file does not hold what the program expects, check the file"},
    Wording{"database.system", "%1; проверьте путь и права",
            "%1; check the path and the permissions"},
    Wording{"database.leftInTheMiddle",
            "касса остановлена во время записи, а файла -shm рядом нет; запустите кассу один раз",
            "the till was stopped while it wrote, and there is no -shm file beside it; start the "
            "till once"},
    Wording{"database.tooNew",
            "файл записан более новой программой (схема %1, известна %2); обновите программу",
            "the file was written by a newer program (schema %1, known is %2); update the program"},
    Wording{"database.wrongVersion",
            "номер схемы %1 не подходит к таблицам файла: он повреждён или это база другой "
            "программы; восстановите файл из копии или назовите другой",
            "the schema's number %1 does not fit the tables of the file: it is damaged or another "
            "program's database; restore the file from a copy or name another one"},
    Wording{"database.emptied",
            "файл пуст или удалён, а рядом остался его журнал с записями (-wal); сохраните оба и "
            "восстановите файл из копии",
            "the file is empty or deleted, while its journal with what was written is still beside "
            "it (-wal); keep both and restore the file from a copy"},
    Wording{"database.transactionFailed",
            "операция отменена из-за предыдущей ошибки; повторите её целиком",
            "the operation was cancelled because of an earlier error; repeat the whole of it"},

    Wording{"transport", "Сервер %1: %2", "Server %1: %2"},
    Wording{"transport.noName", "имя не найдено, проверьте адрес и сеть",
            "the name is not found, check the address and the network"},
    Wording{"transport.noProxyName", "не найдено имя прокси, проверьте http.proxy",
            "the proxy's name is not found, check http.proxy"},
    Wording{"transport.noConnection", "нет соединения%1", "no connection%1"},
    Wording{"transport.noAnswer", "нет ответа за отведённое время",
            "no answer within the time allowed"},
    Wording{"transport.cut", "соединение прервано, ответ пришёл не целиком",
            "the connection broke off, the answer has not come whole"},
    Wording{"transport.cutWhileSending", "соединение прервано при отправке",
            "the connection broke off while sending"},
    Wording{"transport.closed", "соединение закрыто без ответа",
            "the connection was closed without an answer"},
    Wording{"transport.notHttp", "ответ не по протоколу HTTP", "the answer is not HTTP"},
    Wording{"transport.caFile", "не читается файл сертификатов, проверьте http.caFile",
            "the file of certificates cannot be read, check http.caFile"},
    Wording{"transport.noTrust", "сертификату сервера нет доверия%1",
            "the server's certificate is not trusted%1"},
    Wording{"transport.notSecure", "не удалось защищённое соединение%1",
            "no secure connection came about%1"},
    Wording{"transport.aborted", "запрос прерван", "the request was broken off"},
    Wording{"transport.noMemory", "не хватает памяти", "there is not enough memory"},
    Wording{"transport.other", "ошибка обмена%1", "the exchange failed%1"},
    Wording{"transport.status", "Сервер %1: ответ HTTP %2", "Server %1: answer HTTP %2"},
    Wording{"transport.notFinal", "ответ HTTP %1 не завершает запрос",
            "the answer HTTP %1 does not end a request"},
    Wording{"transport.proxyRefuses", "прокси не пропускает (HTTP %1), проверьте http.proxy",
            "the proxy does not let through (HTTP %1), check http.proxy"},
    Wording{"transport.proxyAway", "нет соединения с прокси%1, проверьте http.proxy",
            "no connection to the proxy%1, check http.proxy"},
    Wording{"transport.headersTooLarge",
            "заголовки ответа больше допустимых 256 КиБ или один из них длиннее 100 КиБ",
            "the answer's headers are larger than the 256 KiB allowed, or one of them is longer "
            "than 100 KiB"},
    Wording{"transport.answerTooLarge", "ответ больше допустимых %1 байт",
            "the answer is larger than the %1 bytes allowed"},
    Wording{"transport.badAddress",
            "Адрес сервера не задан или записан с ошибкой: нужен http:// или https://, имя и путь",
            "The server's address is not set or is mistyped: it takes http:// or https://, a name "
            "and a path"},
    Wording{"transport.badHeader", "Заголовок %1 содержит недопустимые знаки, запрос не отправлен",
            "The header %1 holds characters that are not allowed, the request was not sent"},
    Wording{"address.at",
            "в адресе не может быть знака @: для имени и пароля есть свои ключи, а в пути он "
            "пишется %40",
            "an address cannot hold the sign @: user and password have keys of their own, and in a "
            "path it is written %40"},
    Wording{"address.none", "это не адрес; нужен http:// или https://, имя сервера и путь",
            "this is no address; it takes http:// or https://, the server's name and a path"},

    Wording{"secret.notRegular", "%1 не обычный файл; укажите файл с одной строкой",
            "%1 is no regular file; name a file with one line"},
    Wording{"secret.tooLong", "файл %1 длиннее %2 байт", "the file %1 is longer than %2 bytes"},
    Wording{"secret.unreadable", "файл %1 не читается (%2)", "the file %1 cannot be read (%2)"},
    Wording{"secret.lines", "в файле %1 больше одной строки", "the file %1 has more than one line"},
    Wording{"secret.encoding", "файл %1 не в кодировке UTF-8", "the file %1 is not in UTF-8"},
    Wording{"secret.rights",
            "%1: файл с паролем доступен другим пользователям; закройте доступ (chmod g-w,o= %1)",
            "%1: the file with the password is open to other users; close it to them (chmod g-w,o= "
            "%1)"},

    Wording{"sheet", "%1: описание ключей плагина: %2; переустановите плагин",
            "%1: the description of the plug-in's keys: %2; install the plug-in again"},
    Wording{"sheet.type", "строка %1: тип %2 неизвестен", "line %1: the type %2 is unknown"},
    Wording{"sheet.missing", "строка %1: у ключа нет %2", "line %1: the key has no %2"},
    Wording{"sheet.unreadable", "не читается (%1)", "it cannot be read (%1)"},
    Wording{"sheet.notRegular", "это не обычный файл или он больше %1 байт",
            "it is no regular file, or it is larger than %1 bytes"},
    Wording{"sheet.tooDeep", "строка %1: таблицы и списки вложены глубже %2 уровней",
            "line %1: tables and lists are nested deeper than %2 levels"},
    Wording{"sheet.syntax", "строка %1: не по правилам TOML", "line %1: not by the rules of TOML"},
    Wording{"sheet.tables", "ожидаются table и [[key]]", "table and [[key]] are expected"},
    Wording{"sheet.taken", "таблица [%1] занята", "the table [%1] is taken"},

    Wording{"toml.text", "строка", "a text"},
    Wording{"toml.integer", "целое число", "a whole number"},
    Wording{"toml.fraction", "дробное число", "a number with a fraction"},
    Wording{"toml.boolean", "true или false", "true or false"},
    Wording{"toml.list", "список", "a list"},
    Wording{"toml.table", "таблица", "a table"},
    Wording{"toml.time", "дата или время", "a date or time"},
    Wording{"config.value", "%1, строка %2, ключ %3: %4", "%1, line %2, key %3: %4"},
    Wording{"config.noTable", "ожидается таблица [%1], а здесь %2",
            "expected is a table [%1], and here is %2"},
    Wording{"config.outside", "ключ %1 стоит вне таблицы", "the key %1 stands outside of a table"},
    Wording{"config.unknownKey", "ключ %1.%2 неизвестен", "the key %1.%2 is unknown"},
    Wording{"config.unknownTable", "таблица %1 неизвестна", "the table %1 is unknown"},
    Wording{"config.unused", "%1, строка %2: %3 и не используется",
            "%1, line %2: %3 and is not used"},
    Wording{"config.unusedNearest",
            "%1, строка %2: %3 и не используется; возможно, имелось в виду %4",
            "%1, line %2: %3 and is not used; perhaps %4 is meant"},
    Wording{"config.noText", "ожидается строка, а здесь %1; возьмите значение в кавычки",
            "expected is a text, and here is %1; put the value in quotes"},
    Wording{"config.noNumber", "ожидается целое число, а здесь %1",
            "expected is a whole number, and here is %1"},
    Wording{"config.range", "ожидается целое число от %1 до %2",
            "expected is a whole number from %1 to %2"},
    Wording{"config.noSecret", "ожидается строка или { file = \"путь\" }",
            "expected is a text or { file = \"path\" }"},
    Wording{"config.secret", "%1; проверьте путь, права и содержимое",
            "%1; check the path, the permissions and the content"},
    Wording{
        "config.syntax",
        "%1, строка %2, столбец %3: не по правилам TOML; проверьте кавычки и знак равенства",
        "%1, line %2, column %3: not by the rules of TOML; check the quotes and the equals sign"},
    Wording{"config.syntaxOfKey",
            "%1, строка %2, столбец %3, ключ %4: не по правилам TOML; проверьте кавычки и знак "
            "равенства",
            "%1, line %2, column %3, key %4: not by the rules of TOML; check the quotes and the "
            "equals sign"},
    Wording{"config.notRegular", "%1: это не обычный файл; укажите файл настроек",
            "%1: this is no regular file; name a file with settings"},
    Wording{"config.tooLarge",
            "%1: файл больше %2 байт, настройки столько не занимают; проверьте путь",
            "%1: the file is larger than %2 bytes, which settings never are; check the path"},
    Wording{
        "config.unreadable", "%1: файл настроек не читается (%2); проверьте путь и права",
        "%1: the file with the settings cannot be read (%2); check the path and the permissions"},
    Wording{
        "config.tooDeep",
        "%1, строка %2: таблицы и списки вложены глубже %3 уровней; уберите лишние точки и скобки",
        "%1, line %2: tables and lists are nested deeper than %3 levels; take out dots and "
        "brackets that are too many"},

    Wording{"queue", "Очередь отправки: %1", "Outgoing queue: %1"},
    Wording{"queue.noFile", "в настройках нет файла базы данных, добавьте %1 в [%2]",
            "the settings name no database file, add %1 to [%2]"},
    Wording{"queue.noKey", "ключ с файлом базы данных не зарегистрирован",
            "the key for the database file is not registered"},
    Wording{"queue.notStored", "сообщение не сохранено. %1", "the message is not stored. %1"},
    Wording{"queue.status", "HTTP %1", "HTTP %1"},
    Wording{"queue.duplicate",
            "HTTP %1: чек с таким идентификатором уже был обработан; сверьте его с сервером и, "
            "если он там, закончите (queue settle)",
            "HTTP %1: a check with this identifier was taken before; compare it with the server "
            "and, if it is there, finish it (queue settle)"},
    Wording{"queue.wrongAuthorization",
            "HTTP %1: сервер не принял учётные данные; исправьте их в настройках и замените в "
            "очереди (queue reauthorize)",
            "HTTP %1: the server does not accept the credentials; put them right in the settings "
            "and replace them in the queue (queue reauthorize)"},
    Wording{"queue.wrongAddress",
            "HTTP %1: по этому адресу сервер не отвечает на запросы; проверьте serverUrl",
            "HTTP %1: at this address the server answers no requests; check serverUrl"},
    Wording{"queue.refused", "HTTP %1: сервер отказал; посмотрите его ответ (queue show)",
            "HTTP %1: the server refuses; look at its answer (queue show)"},
    Wording{"queue.parkedByHand", "Отложено вручную", "Left out by hand"},
    Wording{"queue.damaged",
            "Запись о сообщении повреждена (%1); сверьте чек с сервером и, если он там, закончите "
            "(queue settle), иначе восстановите базу из копии",
            "The message's record is damaged (%1); compare the check with the server and, if it is "
            "there, finish it (queue settle), otherwise restore the database from a copy"},
    Wording{"queue.damagedState", "неизвестное состояние", "unknown state"},
    Wording{"queue.damagedEmpty", "нет содержимого", "no content"},
    Wording{"queue.damagedContent", "содержимое изменилось", "the content has changed"},
    Wording{"queue.damagedSteps", "неверные шаги", "wrong steps"},
    Wording{"queue.noAccount",
            "Учётные данные сообщения потеряны; замените их (queue reauthorize) и верните "
            "сообщение (queue retry)",
            "The message's credentials are lost; replace them (queue reauthorize) and take the "
            "message back (queue retry)"},
    Wording{"queue.noAddress", "В сообщении нет адресов для отправки",
            "The message has no addresses to be sent to"},

    Wording{"store.passwordInside",
            "Хранилище: в [store] database стоит пароль; перенесите его в файл и укажите "
            "passwordFile",
            "Store: there is a password in [store] database; move it to a file and name that in "
            "passwordFile"},
    Wording{"store.fallback", "Хранилище: [store] fallback может быть \"deliver\" или \"wait\"",
            "Store: [store] fallback may be \"deliver\" or \"wait\""},
    Wording{"store.noModule", "Хранилище: модуль %1 не загружен (%2); установите пакет orva-store",
            "Store: the module %1 is not loaded (%2); install the package orva-store"},
    Wording{"store.begun",
            "Передача хранилищу начата, только оно знает, есть ли у него чек; касса спросит его "
            "снова. %1",
            "Handing over to the store was begun, and only the store knows whether it has the "
            "check; the till asks it again. %1"},
    Wording{"store.otherModule",
            "Хранилище: модуль %1 — другой версии (%2); установите пакет orva-store той же версии, "
            "что и касса",
            "Store: the module %1 is of another version (%2); install the package orva-store of "
            "the till's version"},

    Wording{"store.string",
            "Хранилище: строка подключения не разбирается, проверьте store.database",
            "Store: the connection string cannot be read, check store.database"},
    Wording{"store.passwordFile",
            "Хранилище: файл пароля %1 не читается (%2), проверьте путь и права",
            "Store: the password file %1 cannot be read (%2), check the path and the permissions"},
    Wording{"store.away", "Хранилище %1 недоступно (%2); проверьте сервер и сеть",
            "Store %1 cannot be reached (%2); check the server and the network"},
    Wording{"store.silent", "Хранилище %1 молчит; проверьте сервер и сеть",
            "Store %1 says nothing; check the server and the network"},
    Wording{"store.lost", "Связь с хранилищем прервалась (%1); проверьте сервер и сеть",
            "The connection to the store has broken off (%1); check the server and the network"},
    Wording{"store.wrongPassword",
            "Хранилище %1 не принимает вход (%2); проверьте имя в store.database и пароль в "
            "store.passwordFile",
            "Store %1 does not accept the login (%2); check the user in store.database and the "
            "password in store.passwordFile"},
    Wording{"store.readOnly",
            "Хранилище %1 открыто только для чтения: это резервный сервер; назовите и основной в "
            "store.database",
            "Store %1 is read-only: it is a standby; name the primary too in store.database"},
    Wording{"store.replaced",
            "Хранилище %1 уже заменено другим сервером и не используется; остановите его",
            "Store %1 has been replaced by another server and is not used; stop it"},
    Wording{"store.unsure",
            "Хранилище записало чек, но резервный сервер этого не подтвердил; передача будет "
            "повторена",
            "The store has written, but its standby has not confirmed it; this is repeated"},
    Wording{"store.refused", "Хранилище отказало: %1", "The store refuses: %1"},
    Wording{"store.refusedReadOnly",
            "Хранилище только для чтения (%1); назовите основной сервер в store.database",
            "The store is read-only (%1); name the primary in store.database"},
    Wording{"store.refusedLogin", "Хранилище не принимает вход (%1); проверьте имя и пароль",
            "The store does not accept the login (%1); check user and password"},
    Wording{"store.noSchema",
            "В этой базе нет таблиц хранилища; проверьте имя базы или создайте их (orva-store "
            "migrate)",
            "This database has no tables of a store; check its name or make them (orva-store "
            "migrate)"},
    Wording{"store.olderSchema",
            "Таблицы хранилища версии %1, нужна %2; обновите их (orva-store migrate)",
            "The store's tables are of version %1, needed is %2; bring them up to date (orva-store "
            "migrate)"},
    Wording{"store.newerSchema",
            "Таблицы хранилища записаны более новой программой (версия %1, известна %2); обновите "
            "программу",
            "The store's tables are a newer program's (version %1, known is %2); update the "
            "program"},
    Wording{"store.forbidden",
            "Хранилище не даёт этого имени прав (%1); разрешите кассу (orva-store admit)",
            "The store does not let this login do that (%1); admit the till (orva-store admit)"},
    Wording{"store.diskFull", "Диск хранилища заполнен (%1); освободите место",
            "The store's disk is full (%1); free some space"},
    Wording{"store.tooMany",
            "У хранилища слишком много подключений (%1); увеличьте max_connections",
            "The store has too many connections (%1); raise max_connections"},
    Wording{"store.busy", "Хранилище занято (%1); повторите позже",
            "The store is busy (%1); try again later"},
    Wording{"store.suspendedNone", "В хранилище нет такого отложенного чека: %1",
            "The store has no such suspended check: %1"},
    Wording{"store.suspendedElsewhere", "Отложенный чек %1 у кассы %2",
            "The suspended check %1 is at till %2"},
    Wording{"store.suspendedClosed", "Чек %1 уже закрыт кассой %2",
            "Check %1 has been closed by till %2"},
    Wording{"store.suspendedReleased", "Отложенный чек отдан другой кассе",
            "The suspended check was released to another till"},
    Wording{"store.checkNone", "В хранилище нет чека %1", "The store has no check %1"},
    Wording{"store.checkWaits", "Чек %1 ещё не доставлен серверу лояльности",
            "Check %1 is not delivered to the loyalty server yet"},
    Wording{
        "store.returnUnknown",
        "По этой продаже уже есть возврат %1 (касса %2, чек %3); откажитесь от этого и откройте "
        "возврат снова",
        "There is another return of this sale already, %1 (till %2, check %3); abandon this one "
        "and open it again"},
    Wording{
        "store.returnUndecided",
        "Возврат %1 по этой продаже (касса %2, чек %3) ещё не закрыт; закройте этот снова, когда "
        "тот будет закрыт или отменён",
        "The return %1 of this sale (till %2, check %3) is not closed yet; close this one again "
        "when that one is closed or given up"},
    Wording{"store.returnTooMuch",
            "Вместе с возвратом %1 (касса %2, чек %3) вернули бы больше, чем продано; возврат %4 "
            "не принят",
            "Together with the return %1 (till %2, check %3) more would come back than was sold; "
            "the return %4 is not accepted"},
    Wording{"store.returnReleased",
            "Товар этого возврата уже освобождён; откажитесь от него и откройте возврат снова",
            "What this return takes back has been given free; abandon it and open it again"},
    Wording{"store.ending", "Хранилище завершает соединение (%1)",
            "The store ends the connection (%1)"},
};

} // namespace

const Wording* find(const QString& code)
{
    const auto* const found = std::find_if(all.begin(), all.end(), [&code](const Wording& wording) {
        return code == QLatin1StringView(wording.code);
    });
    return found == all.end() ? nullptr : found;
}

} // namespace poshost::wordings

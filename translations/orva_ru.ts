<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>Console</name>
    <message>
        <source>Usage</source>
        <translation>Вызов</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>КЛЮЧИ</translation>
    </message>
    <message>
        <source>COMMAND</source>
        <translation>КОМАНДА</translation>
    </message>
    <message>
        <source>Arguments</source>
        <translation>Аргументы</translation>
    </message>
    <message>
        <source>(required)</source>
        <translation>(обязательно)</translation>
    </message>
    <message>
        <source>not with</source>
        <translation>не вместе с</translation>
    </message>
    <message>
        <source>only with</source>
        <translation>только с</translation>
    </message>
    <message>
        <source>TEXT</source>
        <translation>ТЕКСТ</translation>
    </message>
    <message>
        <source>NUMBER</source>
        <translation>ЧИСЛО</translation>
    </message>
    <message>
        <source>There is no option &quot;%1&quot; here.</source>
        <translation>Ключа «%1» здесь нет.</translation>
    </message>
    <message>
        <source>There is no option &quot;%1&quot; here; did you mean &quot;%2&quot;?</source>
        <translation>Ключа «%1» здесь нет; возможно, имелся в виду «%2»?</translation>
    </message>
    <message>
        <source>The word &quot;%1&quot; is one too many here.</source>
        <translation>Слово «%1» здесь лишнее.</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;.</source>
        <translation>Команды «%1» нет.</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; did you mean &quot;%2&quot;?</source>
        <translation>Команды «%1» нет; возможно, имелась в виду «%2»?</translation>
    </message>
    <message>
        <source>The command is missing.</source>
        <translation>Не указана команда.</translation>
    </message>
    <message>
        <source>%1 is missing.</source>
        <translation>Не указано: %1.</translation>
    </message>
    <message>
        <source>%1 goes together with %2 only.</source>
        <translation>%1 можно указывать только вместе с %2.</translation>
    </message>
    <message>
        <source>%1 does not go together with %2.</source>
        <translation>%1 нельзя указывать вместе с %2.</translation>
    </message>
    <message>
        <source>%1 cannot be &quot;%2&quot;.</source>
        <translation>Значение «%2» не подходит для %1.</translation>
    </message>
    <message>
        <source>%1 cannot be &quot;%2&quot;; it goes from %3 to %4.</source>
        <translation>Значение «%2» не подходит для %1: допустимо от %3 до %4.</translation>
    </message>
    <message>
        <source>%1 needs a value.</source>
        <translation>Для %1 нужно значение.</translation>
    </message>
    <message>
        <source>%1 stands here twice.</source>
        <translation>%1 указано дважды.</translation>
    </message>
    <message>
        <source>&quot;%1 --help&quot; tells more.</source>
        <translation>Подробнее: «%1 --help».</translation>
    </message>
    <message>
        <source>Print this help and exit</source>
        <translation>Показать эту справку и выйти</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Ключи</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>Команды</translation>
    </message>
    <message>
        <source>the standard output cannot be written (%1)</source>
        <translation>стандартный вывод не записывается (%1)</translation>
    </message>
    <message>
        <source>waiting</source>
        <translation>ожидает</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>приостановлено</translation>
    </message>
    <message>
        <source>parked</source>
        <translation>снято с отправки</translation>
    </message>
    <message>
        <source>delivered</source>
        <translation>доставлено</translation>
    </message>
    <message>
        <source>handed over</source>
        <translation>передано</translation>
    </message>
    <message>
        <source>waits for message %1</source>
        <translation>ждёт сообщения %1</translation>
    </message>
    <message>
        <source>No</source>
        <translation>№</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Очередь</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Состояние</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Шаги</translation>
    </message>
    <message>
        <source>Attempts</source>
        <translation>Попытки</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Ответ</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Создано</translation>
    </message>
    <message>
        <source>Next attempt</source>
        <translation>Следующая попытка</translation>
    </message>
    <message>
        <source>What is in the way</source>
        <translation>Что мешает</translation>
    </message>
    <message>
        <source>Step %1: %2
</source>
        <translation>Шаг %1: %2
</translation>
    </message>
    <message>
        <source>
The server&apos;s last refusal:
%1
</source>
        <translation>
Последний отказ сервера:
%1
</translation>
    </message>
</context>
<context>
    <name>Simulator</name>
    <message>
        <source>The folder %1 for the database cannot be made</source>
        <translation>Не удаётся создать папку %1 для базы данных</translation>
    </message>
    <message>
        <source>The database %1 cannot be opened: %2</source>
        <translation>Базу данных %1 не удаётся открыть: %2</translation>
    </message>
    <message>
        <source>There is no database %1: start orva-simulator first or name another file with --database</source>
        <translation>Базы данных %1 нет: сначала запустите orva-simulator или укажите другой файл в --database</translation>
    </message>
    <message>
        <source>The database %1 is not a database of orva-simulator: name another file with --database</source>
        <translation>%1 — не база данных orva-simulator: укажите другой файл в --database</translation>
    </message>
    <message>
        <source>The database %1 was written by a newer orva-simulator: it has schema version %2, this program knows %3; use the newer program or name another file with --database</source>
        <translation>Базу данных %1 записала более новая программа orva-simulator: у базы версия схемы %2, а эта программа знает %3; возьмите новую программу или укажите другой файл в --database</translation>
    </message>
    <message>
        <source>every connection meets it: give the server another certificate in [tls]</source>
        <translation>это случается с каждым соединением: задайте серверу другой сертификат в [tls]</translation>
    </message>
    <message>
        <source>it happens at the till: let the till ask a name server that does not answer</source>
        <translation>это случается на кассе: пусть касса спрашивает сервер имён, который не отвечает</translation>
    </message>
    <message>
        <source>no running server makes it: stop this one</source>
        <translation>работающий сервер этого не может: остановите его</translation>
    </message>
    <message>
        <source>cannot be &quot;%1&quot; here; %2</source>
        <translation>не может быть «%1»; %2</translation>
    </message>
    <message>
        <source>means nothing for &quot;%1&quot;</source>
        <translation>ничего не значит для «%1»</translation>
    </message>
    <message>
        <source>The certificate %1 with the key %2 cannot be used: both must be PEM files that belong together</source>
        <translation>Сертификат %1 с ключом %2 не подходит: нужны два файла PEM, составляющие пару</translation>
    </message>
    <message>
        <source>Cannot listen at %1, port %2: %3; choose another with --listen or --port</source>
        <translation>Не удаётся принимать соединения на %1, порт %2: %3; выберите другой ключом --listen или --port</translation>
    </message>
    <message>
        <source>no such address</source>
        <translation>такого адреса нет</translation>
    </message>
    <message>
        <source>sale</source>
        <translation>продажа</translation>
    </message>
    <message>
        <source>return</source>
        <translation>возврат</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>Карта</translation>
    </message>
    <message>
        <source>Owner</source>
        <translation>Владелец</translation>
    </message>
    <message>
        <source>Opening</source>
        <translation>Начальный</translation>
    </message>
    <message>
        <source>Earned</source>
        <translation>Начислено</translation>
    </message>
    <message>
        <source>Spent</source>
        <translation>Списано</translation>
    </message>
    <message>
        <source>Given back</source>
        <translation>Возвращено</translation>
    </message>
    <message>
        <source>Taken back</source>
        <translation>Отозвано</translation>
    </message>
    <message>
        <source>Balance</source>
        <translation>Остаток</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Чек</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Вид</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Итого</translation>
    </message>
    <message>
        <source>Discount</source>
        <translation>Скидка</translation>
    </message>
    <message>
        <source>Paid</source>
        <translation>Оплачено</translation>
    </message>
    <message>
        <source>No check is confirmed yet.
</source>
        <translation>Подтверждённых чеков пока нет.
</translation>
    </message>
    <message>
        <source>TOML file of rules and cards (default: built-in ones)</source>
        <translation>Файл TOML с правилами и картами (без него — встроенные)</translation>
    </message>
    <message>
        <source>Address to listen at</source>
        <translation>Адрес, на котором принимать соединения</translation>
    </message>
    <message>
        <source>Port to listen at, 0 for a free one</source>
        <translation>Порт; 0 — любой свободный</translation>
    </message>
    <message>
        <source>SQLite file (default: %1)</source>
        <translation>Файл SQLite (без ключа: %1)</translation>
    </message>
    <message>
        <source>Print the address only, no line per request</source>
        <translation>Напечатать только адрес, без строки на каждый запрос</translation>
    </message>
    <message>
        <source>Print a JSON object a line</source>
        <translation>Печатать по объекту JSON в строке</translation>
    </message>
    <message>
        <source>Print the points of every card and check</source>
        <translation>Показать баллы по всем картам и чекам</translation>
    </message>
    <message>
        <source>The checks as a till lists them, to be compared</source>
        <translation>Чеки в том виде, в каком их выводит касса, — для сверки</translation>
    </message>
    <message>
        <source>As JSON</source>
        <translation>В формате JSON</translation>
    </message>
    <message>
        <source>Print the version and exit</source>
        <translation>Показать версию и выйти</translation>
    </message>
    <message>
        <source>A loyalty server for trying and testing. Without a command it serves until it is stopped (SIGTERM or Ctrl+C).
Exit codes: 0 done, 1 failed, 2 wrong command line or rules.</source>
        <translation>Сервер лояльности для проб и проверок. Без команды работает, пока его не остановят (SIGTERM или Ctrl+C).
Коды завершения: 0 — готово, 1 — не удалось, 2 — ошибка в командной строке или в правилах.</translation>
    </message>
    <message>
        <source>Print the built-in rules, to begin a file with</source>
        <translation>Показать встроенные правила, чтобы начать с них свой файл</translation>
    </message>
    <message>
        <source>built-in rules</source>
        <translation>встроенные правила</translation>
    </message>
    <message>
        <source>Rules: %1
Database: %2
Try: %3
</source>
        <translation>Правила: %1
База данных: %2
Попробуйте: %3
</translation>
    </message>
    <message>
        <source>built-in</source>
        <translation>встроенные</translation>
    </message>
    <message>
        <source>the balance of card %1 is not its opening balance and its movements: the database was changed from outside</source>
        <translation>остаток карты %1 не равен начальному остатку с движениями: базу данных изменили извне</translation>
    </message>
    <message>
        <source>must not be negative</source>
        <translation>не может быть отрицательным</translation>
    </message>
    <message>
        <source>is &quot;%1&quot;, which an earlier card has too</source>
        <translation>равен «%1», как и у одной из карт выше</translation>
    </message>
    <message>
        <source>has the unknown placeholder {%1}: known are {%2}</source>
        <translation>содержит неизвестную подстановку {%1}; известны {%2}</translation>
    </message>
    <message>
        <source>%1: the file of rules cannot be read: %2</source>
        <translation>%1: не удаётся прочитать файл правил: %2</translation>
    </message>
    <message>
        <source>is unknown: known here are %1</source>
        <translation>неизвестен; здесь известны %1</translation>
    </message>
    <message>
        <source>is unknown: did you mean &quot;%1&quot;?</source>
        <translation>неизвестен; возможно, имелся в виду «%1»?</translation>
    </message>
    <message>
        <source>must be a text in quotes</source>
        <translation>должен быть текстом в кавычках</translation>
    </message>
    <message>
        <source>must not hold control characters</source>
        <translation>не должен содержать управляющих символов</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>не указан</translation>
    </message>
    <message>
        <source>must not be empty</source>
        <translation>не может быть пустым</translation>
    </message>
    <message>
        <source>must be a number</source>
        <translation>должен быть числом</translation>
    </message>
    <message>
        <source>must be an amount with at most two decimals, such as 12.50</source>
        <translation>должен быть суммой не более чем с двумя знаками после точки, например 12.50</translation>
    </message>
    <message>
        <source>must be a percentage from 0 to 100 with at most two decimals</source>
        <translation>должен быть процентом от 0 до 100 не более чем с двумя знаками после точки</translation>
    </message>
    <message>
        <source>is &quot;%1&quot;: did you mean &quot;%2&quot;?</source>
        <translation>равен «%1»; возможно, имелось в виду «%2»?</translation>
    </message>
    <message>
        <source>is &quot;%1&quot;: it must be &quot;%2&quot; or &quot;%3&quot;</source>
        <translation>равен «%1», а должен быть «%2» или «%3»</translation>
    </message>
    <message>
        <source>must be a whole number from %1 to %2</source>
        <translation>должен быть целым числом от %1 до %2</translation>
    </message>
    <message>
        <source>must be a number from %1 to %2</source>
        <translation>должен быть числом от %1 до %2</translation>
    </message>
    <message>
        <source>must be a table</source>
        <translation>должен быть таблицей</translation>
    </message>
    <message>
        <source>must be an array of tables, written [[%1]]</source>
        <translation>должен быть массивом таблиц и записываться как [[%1]]</translation>
    </message>
    <message>
        <source>%1:%2: the key &quot;%3&quot; %4</source>
        <translation>%1:%2: ключ «%3» %4</translation>
    </message>
    <message>
        <source>Serve a page to look at and to try with at the admin address (default: on a terminal)</source>
        <translation>Показывать страницу для просмотра и проб по адресу управления (по умолчанию — в терминале)</translation>
    </message>
    <message>
        <source>Port on 127.0.0.1 to read the ledger and to arm faults at, 0 for a free one</source>
        <translation>Порт на 127.0.0.1, чтобы читать книгу и готовить неисправности; 0 — любой свободный</translation>
    </message>
    <message>
        <source>Rules: read anew
</source>
        <translation>Правила: прочитаны заново
</translation>
    </message>
    <message>
        <source>the change of [tls] takes effect at the next start</source>
        <translation>изменение в [tls] подействует при следующем запуске</translation>
    </message>
    <message>
        <source>the rules stay as they were: %1</source>
        <translation>правила остаются прежними: %1</translation>
    </message>
    <message>
        <source>stands beside &quot;body&quot;: an answer has one of them</source>
        <translation>стоит рядом с «body»: в ответе бывает только одно из двух</translation>
    </message>
    <message>
        <source>names %1, which cannot be read: %2</source>
        <translation>называет файл %1, который не удаётся прочитать: %2</translation>
    </message>
    <message>
        <source>%1:%2: this is not JSON: %3</source>
        <translation>%1:%2: это не JSON: %3</translation>
    </message>
    <message>
        <source>%1: this is not a JSON object</source>
        <translation>%1: это не объект JSON</translation>
    </message>
    <message>
        <source>%1: the key &quot;%2&quot; %3</source>
        <translation>%1: ключ «%2» %3</translation>
    </message>
    <message>
        <source>%1:%2: this is not TOML: %3</source>
        <translation>%1:%2: это не TOML: %3</translation>
    </message>
    <message>
        <source>must be true or false</source>
        <translation>должно быть true или false</translation>
    </message>
    <message>
        <source>what is shown is not whole: %1</source>
        <translation>показано не всё: %1</translation>
    </message>
    <message>
        <source>names %1, which is no regular file</source>
        <translation>называет %1, это не обычный файл</translation>
    </message>
    <message>
        <source>names %1, which is larger than %2 bytes</source>
        <translation>называет %1, где больше %2 байт</translation>
    </message>
    <message>
        <source>%1 is larger than %2 bytes, the most that rules may have; put long answers into files of their own</source>
        <translation>%1 больше %2 байт, правилам больше не положено; вынесите длинные ответы в отдельные файлы</translation>
    </message>
    <message>
        <source>%1:%2: tables and lists are nested deeper than %3 levels; look at the dots and brackets</source>
        <translation>%1:%2: таблицы и списки вложены глубже %3 уровней; проверьте точки и скобки</translation>
    </message>
    <message>
        <source>%1 is no regular file; name a file of rules</source>
        <translation>%1 не обычный файл; укажите файл правил</translation>
    </message>
    <message>
        <source>amounts have a comma: 10,50</source>
        <translation>суммы пишутся через запятую: 10,50</translation>
    </message>
    <message>
        <source>amounts from a thousand up are grouped: 1 234.50</source>
        <translation>в суммах от тысячи разряды разделены пробелами: 1 234.50</translation>
    </message>
    <message>
        <source>the points to be earned have a plus: +4.75</source>
        <translation>перед начисляемыми баллами стоит плюс: +4.75</translation>
    </message>
    <message>
        <source>amounts are written as doubles are: 1.6e+02</source>
        <translation>суммы записаны в экспоненциальном виде: 1.6e+02</translation>
    </message>
    <message>
        <source>amounts have four decimals: 4.7500</source>
        <translation>в суммах четыре знака после точки: 4.7500</translation>
    </message>
    <message>
        <source>amounts have their currency behind them: 4.75 RUB</source>
        <translation>за суммой стоит валюта: 4.75 RUB</translation>
    </message>
    <message>
        <source>the balance is in kopecks: 50000</source>
        <translation>баланс указан в копейках: 50000</translation>
    </message>
    <message>
        <source>amounts are binary fractions of 32 bits</source>
        <translation>суммы хранятся как двоичные дроби в 32 бита</translation>
    </message>
    <message>
        <source>an amount of zero is an empty element</source>
        <translation>нулевая сумма — пустой элемент</translation>
    </message>
    <message>
        <source>discounts are negative, as changes of the price</source>
        <translation>скидки отрицательные, как изменение цены</translation>
    </message>
    <message>
        <source>identifiers of lines are texts with blanks around them</source>
        <translation>идентификаторы строк — тексты с пробелами вокруг</translation>
    </message>
    <message>
        <source>identifiers of lines are names: line-1</source>
        <translation>идентификаторы строк — имена: line-1</translation>
    </message>
    <message>
        <source>identifiers of lines count from zero</source>
        <translation>идентификаторы строк считаются с нуля</translation>
    </message>
    <message>
        <source>all lines have the identifier of the first</source>
        <translation>у всех строк идентификатор первой</translation>
    </message>
    <message>
        <source>the last of several lines does not come back</source>
        <translation>последняя из нескольких строк не возвращается</translation>
    </message>
    <message>
        <source>a gift that nobody asked for stands among the lines</source>
        <translation>среди строк стоит подарок, которого никто не просил</translation>
    </message>
    <message>
        <source>the check&apos;s identifier is filled up with blanks</source>
        <translation>идентификатор чека дополнен пробелами</translation>
    </message>
    <message>
        <source>the answer has an identifier of the server&apos;s own</source>
        <translation>в ответе собственный идентификатор сервера</translation>
    </message>
    <message>
        <source>the card&apos;s number comes back with stars</source>
        <translation>номер карты возвращается со звёздочками</translation>
    </message>
    <message>
        <source>the date comes back with a time zone</source>
        <translation>дата возвращается с часовым поясом</translation>
    </message>
    <message>
        <source>the date comes back as that of another time zone</source>
        <translation>дата возвращается пересчитанной в другой часовой пояс</translation>
    </message>
    <message>
        <source>the goods codes do not come back</source>
        <translation>коды товаров не возвращаются</translation>
    </message>
    <message>
        <source>quantities come back as whole numbers</source>
        <translation>количества возвращаются целыми</translation>
    </message>
    <message>
        <source>letters beyond ASCII come back as question marks</source>
        <translation>буквы, которых нет в ASCII, возвращаются вопросительными знаками</translation>
    </message>
    <message>
        <source>the check&apos;s total comes back less one rouble</source>
        <translation>сумма чека возвращается на рубль меньше</translation>
    </message>
    <message>
        <source>the first answer for a card has no balance</source>
        <translation>в первом ответе по карте нет баланса</translation>
    </message>
    <message>
        <source>a balance of zero is left out</source>
        <translation>нулевой баланс пропущен</translation>
    </message>
    <message>
        <source>the balance is the word null</source>
        <translation>вместо баланса стоит слово null</translation>
    </message>
    <message>
        <source>nothing is said of the card&apos;s owner and account</source>
        <translation>о владельце карты и её счёте не сказано ничего</translation>
    </message>
    <message>
        <source>the balance stays as it was when the card was first seen</source>
        <translation>баланс остаётся таким, каким был при первом обращении к карте</translation>
    </message>
    <message>
        <source>the balance has the points that the check would earn</source>
        <translation>в балансе уже есть баллы, которые начислит чек</translation>
    </message>
    <message>
        <source>each pre-check sets a rouble of the balance aside</source>
        <translation>каждая предпроверка откладывает рубль баланса</translation>
    </message>
    <message>
        <source>the discount of a line is its total and one rouble more</source>
        <translation>скидка строки на рубль больше её суммы</translation>
    </message>
    <message>
        <source>points may pay a line&apos;s total as if there were no discounts</source>
        <translation>баллами можно оплатить всю сумму строки, как будто скидок нет</translation>
    </message>
    <message>
        <source>points to be earned are counted in kopecks</source>
        <translation>начисляемые баллы посчитаны в копейках</translation>
    </message>
    <message>
        <source>points may pay more of a check than the card holds</source>
        <translation>баллами можно оплатить больше, чем есть на карте</translation>
    </message>
    <message>
        <source>the points that a check earns are whole, those of its lines not</source>
        <translation>чек начисляет целые баллы, а его строки нет</translation>
    </message>
    <message>
        <source>the channels of messages are in capital letters: POS</source>
        <translation>каналы сообщений записаны заглавными буквами: POS</translation>
    </message>
    <message>
        <source>the elements of the owner&apos;s name begin with capital letters</source>
        <translation>элементы с именем владельца начинаются с заглавной буквы</translation>
    </message>
    <message>
        <source>the points that a return takes back are positive</source>
        <translation>баллы, которые снимет возврат, положительные</translation>
    </message>
    <message>
        <source>a pre-check is answered 200 with a page for people</source>
        <translation>на предпроверку приходит 200 и страница для людей</translation>
    </message>
    <message>
        <source>a pre-check is answered 200 without a body</source>
        <translation>на предпроверку приходит 200 без тела</translation>
    </message>
    <message>
        <source>a pre-check is answered in JSON</source>
        <translation>на предпроверку приходит ответ в JSON</translation>
    </message>
    <message>
        <source>refusals are answered 200 with an error in the body</source>
        <translation>отказы приходят со статусом 200 и ошибкой в теле</translation>
    </message>
    <message>
        <source>an empty line stands before the XML declaration</source>
        <translation>перед объявлением XML стоит пустая строка</translation>
    </message>
    <message>
        <source>an answer is in UTF-8 and declares windows-1251</source>
        <translation>ответ в UTF-8 объявляет windows-1251</translation>
    </message>
    <message>
        <source>an answer is in windows-1251 and does not say so</source>
        <translation>ответ в windows-1251 об этом не говорит</translation>
    </message>
    <message>
        <source>an answer brings a document type with declarations</source>
        <translation>в ответе есть тип документа с объявлениями</translation>
    </message>
    <message>
        <source>answers are compressed though nobody asked for it</source>
        <translation>ответы сжаты, хотя никто не просил</translation>
    </message>
    <message>
        <source>the length of an answer counts characters, not bytes</source>
        <translation>длина ответа посчитана в символах, а не в байтах</translation>
    </message>
    <message>
        <source>an answer of more than 64 KiB is cut in the middle</source>
        <translation>ответ больше 64 КиБ обрывается на середине</translation>
    </message>
    <message>
        <source>refusals have no body</source>
        <translation>у отказов нет тела</translation>
    </message>
    <message>
        <source>refusals have the whole number of the card</source>
        <translation>в отказах стоит полный номер карты</translation>
    </message>
    <message>
        <source>confirmations are answered 200 without a body</source>
        <translation>на подтверждения приходит 200 без тела</translation>
    </message>
    <message>
        <source>the Date header is an hour late</source>
        <translation>заголовок Date отстаёт на час</translation>
    </message>
    <message>
        <source>answers have no Date header</source>
        <translation>у ответов нет заголовка Date</translation>
    </message>
    <message>
        <source>the Date header has a form of its own: 22.11.2026 13:07</source>
        <translation>у заголовка Date собственный вид: 22.11.2026 13:07</translation>
    </message>
    <message>
        <source>the first answer for a card takes seven seconds to come</source>
        <translation>первый ответ по карте приходит семь секунд</translation>
    </message>
    <message>
        <source>the first answer for a card begins after seven seconds</source>
        <translation>первый ответ по карте начинается через семь секунд</translation>
    </message>
    <message>
        <source>connections are closed behind an answer that does not say so</source>
        <translation>соединение закрывается после ответа, который об этом не говорит</translation>
    </message>
    <message>
        <source>requests are sent on to another address with 308</source>
        <translation>запросы отправляются по другому адресу со статусом 308</translation>
    </message>
    <message>
        <source>every twentieth request is answered 429 without Retry-After</source>
        <translation>на каждый двадцатый запрос приходит 429 без Retry-After</translation>
    </message>
    <message>
        <source>every twentieth request is answered 403 for its being too many</source>
        <translation>на каждый двадцатый запрос приходит 403, потому что их слишком много</translation>
    </message>
    <message>
        <source>of two requests for a card at the same time one is answered 500</source>
        <translation>из двух одновременных запросов по карте один получает 500</translation>
    </message>
    <message>
        <source>wrong credentials are answered 403</source>
        <translation>на неверные учётные данные приходит 403</translation>
    </message>
    <message>
        <source>wrong credentials lead to a page to log in at</source>
        <translation>неверные учётные данные ведут на страницу входа</translation>
    </message>
    <message>
        <source>any user with any password is answered</source>
        <translation>отвечает любому пользователю с любым паролем</translation>
    </message>
    <message>
        <source>a body that is no XML is refused before the credentials are seen</source>
        <translation>тело, которое не XML, отклоняется раньше проверки учётных данных</translation>
    </message>
    <message>
        <source>a body that is no check is answered 500</source>
        <translation>на тело, которое не чек, приходит 500</translation>
    </message>
    <message>
        <source>an unknown card is answered 404</source>
        <translation>на неизвестную карту приходит 404</translation>
    </message>
    <message>
        <source>an unknown card is answered as one without points</source>
        <translation>неизвестная карта получает ответ как карта без баллов</translation>
    </message>
    <message>
        <source>lines that do not add up are answered 500</source>
        <translation>если строки не сходятся с суммой, приходит 500</translation>
    </message>
    <message>
        <source>lines need not add up to the total</source>
        <translation>строки не обязаны сходиться с суммой</translation>
    </message>
    <message>
        <source>two lines may have one identifier</source>
        <translation>у двух строк может быть один идентификатор</translation>
    </message>
    <message>
        <source>a request with an XML declaration is refused</source>
        <translation>запрос с объявлением XML отклоняется</translation>
    </message>
    <message>
        <source>a request with an element that is not known is refused</source>
        <translation>запрос с неизвестным элементом отклоняется</translation>
    </message>
    <message>
        <source>a check without lines is refused</source>
        <translation>чек без строк отклоняется</translation>
    </message>
    <message>
        <source>a check of more than 500 lines is refused</source>
        <translation>чек, в котором больше 500 строк, отклоняется</translation>
    </message>
    <message>
        <source>a check with a date of another year is refused</source>
        <translation>чек с датой другого года отклоняется</translation>
    </message>
    <message>
        <source>a pre-check with a changed content is answered 409</source>
        <translation>на изменённую предпроверку приходит 409</translation>
    </message>
    <message>
        <source>a pre-check that is repeated is answered 409</source>
        <translation>на повторную предпроверку приходит 409</translation>
    </message>
    <message>
        <source>a changed pre-check gets the first answer to its check</source>
        <translation>на изменённую предпроверку приходит первый ответ по этому чеку</translation>
    </message>
    <message>
        <source>a payment try that is repeated is answered 409</source>
        <translation>на повторную попытку оплаты приходит 409</translation>
    </message>
    <message>
        <source>another payment try of a check is answered 409</source>
        <translation>на другую попытку оплаты чека приходит 409</translation>
    </message>
    <message>
        <source>points are booked at the payment try</source>
        <translation>баллы проводятся при попытке оплаты</translation>
    </message>
    <message>
        <source>every payment try is answered 200</source>
        <translation>на любую попытку оплаты приходит 200</translation>
    </message>
    <message>
        <source>a confirmation needs no payment try</source>
        <translation>подтверждению не нужна попытка оплаты</translation>
    </message>
    <message>
        <source>a confirmation may be another than what was tried</source>
        <translation>подтверждение может отличаться от того, что было в попытке</translation>
    </message>
    <message>
        <source>a confirmation with other blanks is taken for another one</source>
        <translation>подтверждение с другими пробелами считается другим</translation>
    </message>
    <message>
        <source>a confirmation of an earlier answer is refused</source>
        <translation>подтверждение по более раннему ответу отклоняется</translation>
    </message>
    <message>
        <source>a card&apos;s checks can be confirmed up to its next pre-check</source>
        <translation>чеки карты можно подтвердить только до её следующей предпроверки</translation>
    </message>
    <message>
        <source>a refused payment try takes the place of the one before</source>
        <translation>отклонённая попытка оплаты заменяет предыдущую</translation>
    </message>
    <message>
        <source>a confirmation over another connection is booked again</source>
        <translation>подтверждение по другому соединению проводится ещё раз</translation>
    </message>
    <message>
        <source>the first confirmation of a check is booked and answered 500</source>
        <translation>первое подтверждение чека проведено, но приходит 500</translation>
    </message>
    <message>
        <source>a pre-check of a booked check is answered 200</source>
        <translation>на предпроверку проведённого чека приходит 200</translation>
    </message>
    <message>
        <source>a repeated confirmation is answered 404</source>
        <translation>на повторное подтверждение приходит 404</translation>
    </message>
    <message>
        <source>points earned are rounded down to whole kopecks</source>
        <translation>начисленные баллы округляются вниз до копейки</translation>
    </message>
    <message>
        <source>a check earns the same however much of it points have paid</source>
        <translation>чек начисляет одинаково, сколько бы ни оплатили баллами</translation>
    </message>
    <message>
        <source>points earned are rounded once for the whole check</source>
        <translation>начисленные баллы округляются один раз на весь чек</translation>
    </message>
    <message>
        <source>the points of the payment try are forgotten</source>
        <translation>баллы из попытки оплаты забыты</translation>
    </message>
    <message>
        <source>a check that points pay for spends all that they may pay</source>
        <translation>чек, в котором платят баллами, списывает всё, что разрешено</translation>
    </message>
    <message>
        <source>a check is refused when the card holds less by now</source>
        <translation>чек отклоняется, если на карте уже меньше баллов</translation>
    </message>
    <message>
        <source>what was paid need not be what was to be paid</source>
        <translation>оплачено может быть не столько, сколько надо</translation>
    </message>
    <message>
        <source>a line may use more than it was granted</source>
        <translation>строка может использовать больше, чем ей предоставлено</translation>
    </message>
    <message>
        <source>a check may be confirmed with another card</source>
        <translation>чек можно подтвердить с другой картой</translation>
    </message>
    <message>
        <source>a check may be confirmed with other lines</source>
        <translation>чек можно подтвердить с другими строками</translation>
    </message>
    <message>
        <source>a sale that nobody knows may be returned</source>
        <translation>можно вернуть продажу, которой никто не знает</translation>
    </message>
    <message>
        <source>a sale may be returned with another card</source>
        <translation>продажу можно вернуть с другой картой</translation>
    </message>
    <message>
        <source>more may be returned than was sold</source>
        <translation>можно вернуть больше, чем продано</translation>
    </message>
    <message>
        <source>a return may give back any number of points</source>
        <translation>возврат может вернуть сколько угодно баллов</translation>
    </message>
    <message>
        <source>returns give back by the share of the sale&apos;s money</source>
        <translation>возвраты отдают баллы по доле в деньгах продажи</translation>
    </message>
    <message>
        <source>returns do not give back the points that were spent</source>
        <translation>возвраты не отдают потраченные баллы</translation>
    </message>
    <message>
        <source>returns do not take back the points that were earned</source>
        <translation>возвраты не снимают начисленные баллы</translation>
    </message>
    <message>
        <source>each partial return is rounded by itself</source>
        <translation>каждый частичный возврат округляется сам по себе</translation>
    </message>
    <message>
        <source>Deviation</source>
        <translation>Отклонение</translation>
    </message>
    <message>
        <source>Breaks</source>
        <translation>Нарушает</translation>
    </message>
    <message>
        <source>What the server does</source>
        <translation>Что делает сервер</translation>
    </message>
    <message>
        <source>Deviates: %1
</source>
        <translation>Отклонения: %1
</translation>
    </message>
    <message>
        <source>Do wrong on purpose what NAME says, several times for several; list shows them</source>
        <translation>Намеренно делать не так, как говорит ИМЯ; для нескольких указать несколько раз, list показывает все</translation>
    </message>
    <message>
        <source>there is no deviation %1: &quot;--deviate list&quot; shows them all</source>
        <translation>отклонения %1 нет: «--deviate list» показывает все</translation>
    </message>
</context>
<context>
    <name>Till</name>
    <message numerus="yes">
        <source>The loyalty system sent %n more that the check cannot take; that is left out.</source>
        <translation>
            <numerusform>Система лояльности прислала ещё %n сумму, которой в чеке нет места; она пропущена.</numerusform>
            <numerusform>Система лояльности прислала ещё %n суммы, которым в чеке нет места; они пропущены.</numerusform>
            <numerusform>Система лояльности прислала ещё %n сумм, которым в чеке нет места; они пропущены.</numerusform>
        </translation>
    </message>
    <message>
        <source>The quantity must be above 0.</source>
        <translation>Количество должно быть больше 0.</translation>
    </message>
    <message>
        <source>The quantity must be a whole number of pieces above 0.</source>
        <translation>Количество должно быть целым числом штук больше 0.</translation>
    </message>
    <message>
        <source>The check has no line %1.</source>
        <translation>В чеке нет строки %1.</translation>
    </message>
    <message>
        <source>The check&apos;s sum would be more than a till can count; nothing was changed.</source>
        <translation>Сумма чека превысила бы ту, которую может посчитать касса; ничего не изменено.</translation>
    </message>
    <message>
        <source>The sum is %1 and %2 was tendered; take the %3 that are missing.</source>
        <translation>К оплате %1, внесено %2; примите недостающие %3.</translation>
    </message>
    <message>
        <source>The check is not closed (the loyalty system does not confirm it); close it again.</source>
        <translation>Чек не закрыт (система лояльности его не подтверждает); закройте его ещё раз.</translation>
    </message>
    <message>
        <source>The check is not closed (%1); close it again.</source>
        <translation>Чек не закрыт (%1); закройте его ещё раз.</translation>
    </message>
    <message>
        <source>The loyalty system does not restore its state (%1).</source>
        <translation>Система лояльности не восстановила своё состояние (%1).</translation>
    </message>
    <message>
        <source>The loyalty system does not lay the check down (%1).</source>
        <translation>Система лояльности не освободила чек (%1).</translation>
    </message>
    <message>
        <source>A check is suspended only after a successful request; request first, or close it.</source>
        <translation>Отложить чек можно только после успешного запроса; сделайте запрос или закройте чек.</translation>
    </message>
    <message>
        <source>The loyalty system does not restore its state (%1); the check stays suspended.</source>
        <translation>Система лояльности не восстановила своё состояние (%1); чек остаётся отложенным.</translation>
    </message>
    <message>
        <source>Check %1 stays suspended.</source>
        <translation>Чек %1 остаётся отложенным.</translation>
    </message>
    <message>
        <source>Check %1 was still open and is abandoned.</source>
        <translation>Чек %1 оставался открытым и отменён.</translation>
    </message>
    <message>
        <source>No check is open; open one first.</source>
        <translation>Нет открытого чека; сначала откройте чек.</translation>
    </message>
    <message>
        <source>This is a return; only a sale can be changed or paid.</source>
        <translation>Это возврат; изменять и оплачивать можно только продажу.</translation>
    </message>
    <message>
        <source>Check %1 is still open; close, suspend or abandon it first.</source>
        <translation>Чек %1 ещё открыт; сначала закройте, отложите или отмените его.</translation>
    </message>
    <message>
        <source>the loyalty system gives no reason</source>
        <translation>система лояльности не назвала причину</translation>
    </message>
    <message>
        <source>The check has a card already; close or abandon it first.</source>
        <translation>В чеке уже есть карта; сначала закройте или отмените чек.</translation>
    </message>
    <message>
        <source>The check has no card, so there is nobody to ask about.</source>
        <translation>В чеке нет карты, спрашивать не о ком.</translation>
    </message>
    <message>
        <source>The server has not got the sale yet, so it is not asked about the return; the return is confirmed after the sale.</source>
        <translation>Сервер ещё не получил продажу, поэтому о возврате его не спрашивают; возврат будет подтверждён после продажи.</translation>
    </message>
    <message>
        <source>The loyalty system does not answer about the return (%1); it is confirmed all the same.</source>
        <translation>Система лояльности не отвечает о возврате (%1); он всё равно будет подтверждён.</translation>
    </message>
    <message>
        <source>The sale goes on without the loyalty system (%1).</source>
        <translation>Продажа продолжается без системы лояльности (%1).</translation>
    </message>
    <message>
        <source>The loyalty system gives no usable number of points to spend; none can be spent.</source>
        <translation>Система лояльности не сообщила пригодное число баллов для списания; списать баллы нельзя.</translation>
    </message>
    <message>
        <source>There are no points to pay with: the sale goes without the loyalty system.</source>
        <translation>Платить баллами нельзя: продажа идёт без системы лояльности.</translation>
    </message>
    <message>
        <source>Of the %1 points only %2 can be spent.</source>
        <translation>Из баллов (%1) можно списать только %2.</translation>
    </message>
    <message>
        <source>Of the %1 points %2 found a place on the lines.</source>
        <translation>Из баллов (%1) по строкам удалось распределить %2.</translation>
    </message>
    <message>
        <source>The points cannot be spent (%1); the loyalty system is asked again before the check closes.</source>
        <translation>Списать баллы не удалось (%1); перед закрытием чека система лояльности будет спрошена ещё раз.</translation>
    </message>
    <message>
        <source>The stored check %1 was written by a newer till; use that one.</source>
        <translation>Сохранённый чек %1 записала более новая касса; откройте его в ней.</translation>
    </message>
    <message>
        <source>The stored check %1 is damaged; look for it in a copy of the database.</source>
        <translation>Сохранённый чек %1 повреждён; поищите его в копии базы данных.</translation>
    </message>
    <message>
        <source>%1, line %2, %3: %4.</source>
        <translation>%1, строка %2, %3: %4.</translation>
    </message>
    <message>
        <source>the field is missing; add it here</source>
        <translation>поля нет; добавьте его здесь</translation>
    </message>
    <message>
        <source>there is no such field; the fields here are %1</source>
        <translation>такого поля нет; здесь возможны поля %1</translation>
    </message>
    <message>
        <source>a text is expected; put it in quotes</source>
        <translation>ожидается текст; возьмите его в кавычки</translation>
    </message>
    <message>
        <source>the text is empty; write something or leave the field out</source>
        <translation>текст пуст; напишите что-нибудь или уберите поле</translation>
    </message>
    <message>
        <source>a whole number from 1 to %1 is expected</source>
        <translation>ожидается целое число от 1 до %1</translation>
    </message>
    <message>
        <source>a number is expected, such as 49.90</source>
        <translation>ожидается число, например 49.90</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number from 0 with at most %2 decimals after a point</source>
        <translation>«%1» — не число от 0 с точкой и не более чем %2 знаками после неё</translation>
    </message>
    <message>
        <source>%1 is more than a till can count</source>
        <translation>%1 — больше, чем может посчитать касса</translation>
    </message>
    <message>
        <source>%1: the check file cannot be read (%2); look at its path and rights.</source>
        <translation>%1: не удаётся прочитать файл чека (%2); проверьте путь и права.</translation>
    </message>
    <message>
        <source>%1, line %2: this is not TOML (%3); look at the quotes and brackets.</source>
        <translation>%1, строка %2: это не TOML (%3); проверьте кавычки и скобки.</translation>
    </message>
    <message>
        <source>there is no goods line; write a [[line]] for each</source>
        <translation>нет ни одной товарной строки; опишите каждую в [[line]]</translation>
    </message>
    <message>
        <source>a goods line is a table; write [[line]] above it</source>
        <translation>товарная строка — это таблица; напишите над ней [[line]]</translation>
    </message>
    <message>
        <source>nothing is 0 of something; write a quantity above 0</source>
        <translation>нулевого количества не бывает; укажите количество больше 0</translation>
    </message>
    <message>
        <source>pieces are counted in whole numbers; for a weight write unit = &quot;kg&quot;</source>
        <translation>штуки считают целыми числами; для весового товара напишите unit = &quot;kg&quot;</translation>
    </message>
    <message>
        <source>the unit &quot;%1&quot; is not known; write &quot;pcs&quot; or &quot;kg&quot;</source>
        <translation>единица «%1» неизвестна; напишите &quot;pcs&quot; или &quot;kg&quot;</translation>
    </message>
    <message>
        <source>price times quantity is more than a check can hold</source>
        <translation>цена, умноженная на количество, больше, чем вмещает чек</translation>
    </message>
    <message>
        <source>up to this line the sum is more than a check can hold; split the check</source>
        <translation>к этой строке сумма больше, чем вмещает чек; разделите чек</translation>
    </message>
    <message>
        <source>position %1 stands here twice; write it once with the whole quantity</source>
        <translation>позиция %1 указана дважды; укажите её один раз со всем количеством</translation>
    </message>
    <message>
        <source>the type &quot;%1&quot; is not known; write &quot;sale&quot; or &quot;return&quot;</source>
        <translation>вид «%1» неизвестен; напишите &quot;sale&quot; или &quot;return&quot;</translation>
    </message>
    <message>
        <source>Check %1 has been closed or abandoned by another till meanwhile; abandon it here and open a new one.</source>
        <translation>Тем временем чек %1 закрыла или отменила другая касса; отмените его здесь и откройте новый.</translation>
    </message>
    <message>
        <source>Check %1 has been closed or abandoned by another till meanwhile.</source>
        <translation>Тем временем чек %1 закрыла или отменила другая касса.</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>диск заполнен</translation>
    </message>
    <message>
        <source>Another return of this sale has been closed meanwhile; abandon this one and open it again.</source>
        <translation>Тем временем закрыт другой возврат по этой продаже; отмените этот и откройте его заново.</translation>
    </message>
    <message>
        <source>There is no suspended check.</source>
        <translation>Отложенных чеков нет.</translation>
    </message>
    <message>
        <source>There is no suspended check %1; look at the list of checks.</source>
        <translation>Отложенного чека %1 нет; посмотрите список чеков.</translation>
    </message>
    <message>
        <source>There is no closed sale &quot;%1&quot;; look at the list of checks.</source>
        <translation>Закрытой продажи «%1» нет; посмотрите список чеков.</translation>
    </message>
    <message>
        <source>Several sales have the number %1; name the sale by its identifier.</source>
        <translation>Номер %1 у нескольких продаж; укажите идентификатор продажи.</translation>
    </message>
    <message>
        <source>kg</source>
        <translation>кг</translation>
    </message>
    <message>
        <source>pcs</source>
        <translation>шт</translation>
    </message>
    <message>
        <source>No</source>
        <translation>№</translation>
    </message>
    <message>
        <source>Goods</source>
        <translation>Товар</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>Кол-во</translation>
    </message>
    <message>
        <source>Price</source>
        <translation>Цена</translation>
    </message>
    <message>
        <source>Sum</source>
        <translation>Сумма</translation>
    </message>
    <message>
        <source>Discount</source>
        <translation>Скидка</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Баллы</translation>
    </message>
    <message>
        <source>To pay</source>
        <translation>К оплате</translation>
    </message>
    <message>
        <source>Earns</source>
        <translation>Начислят</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Итого</translation>
    </message>
    <message>
        <source>Returned</source>
        <translation>Возврат</translation>
    </message>
    <message>
        <source>Of</source>
        <translation>Из</translation>
    </message>
    <message>
        <source>Points back</source>
        <translation>Вернуть баллов</translation>
    </message>
    <message>
        <source>Money back</source>
        <translation>Вернуть денег</translation>
    </message>
    <message>
        <source>Earned less</source>
        <translation>Отозвать</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Возврат</translation>
    </message>
    <message>
        <source>Sale</source>
        <translation>Продажа</translation>
    </message>
    <message>
        <source>%1 No %2 of %3, check %4
</source>
        <translation>%1 № %2 от %3, чек %4
</translation>
    </message>
    <message>
        <source>Of sale: %1
</source>
        <translation>По продаже: %1
</translation>
    </message>
    <message>
        <source>Card: %1</source>
        <translation>Карта: %1</translation>
    </message>
    <message>
        <source>, balance before this check %1</source>
        <translation>, остаток до этого чека %1</translation>
    </message>
    <message>
        <source>Points given back: %1, taken back: %2
</source>
        <translation>Баллов возвращено: %1, отозвано: %2
</translation>
    </message>
    <message>
        <source>no usable number</source>
        <translation>непригодное число</translation>
    </message>
    <message>
        <source>Points spent: %1, earned: %2 (the loyalty system counts %3)
</source>
        <translation>Баллов списано: %1, начислено: %2 (по счёту системы лояльности: %3)
</translation>
    </message>
    <message>
        <source>Without the loyalty system: %1
</source>
        <translation>Без системы лояльности: %1
</translation>
    </message>
    <message>
        <source>Money back: %1
</source>
        <translation>Возвращено денег: %1
</translation>
    </message>
    <message>
        <source>Paid: %1</source>
        <translation>Оплачено: %1</translation>
    </message>
    <message>
        <source>, tendered %1, change %2</source>
        <translation>, внесено %1, сдача %2</translation>
    </message>
    <message>
        <source>The loyalty system has not been asked about the check as it stands.
</source>
        <translation>О чеке в его нынешнем виде система лояльности ещё не спрошена.
</translation>
    </message>
    <message>
        <source>Points that may be spent: %1
</source>
        <translation>Можно списать баллов: %1
</translation>
    </message>
    <message>
        <source>To the cashier: %1</source>
        <translation>Кассиру: %1</translation>
    </message>
    <message>
        <source>To the customer: %1</source>
        <translation>Покупателю: %1</translation>
    </message>
    <message>
        <source>Tendered: %1
</source>
        <translation>Внесено: %1
</translation>
    </message>
    <message>
        <source>Configuration file</source>
        <translation>Файл настроек</translation>
    </message>
    <message>
        <source>Loyalty plug-in; otherwise plugin in [till]</source>
        <translation>Плагин лояльности; без ключа — plugin из [till]</translation>
    </message>
    <message>
        <source>Database of checks and queue; otherwise database in [till]</source>
        <translation>База чеков и очереди; без ключа — database из [till]</translation>
    </message>
    <message>
        <source>Write the loyalty system&apos;s log to the standard error</source>
        <translation>Писать журнал системы лояльности в стандартный поток ошибок</translation>
    </message>
    <message>
        <source>No progress, and not a word about what went well</source>
        <translation>Без хода работы и без слов о том, что удалось</translation>
    </message>
    <message>
        <source>Print the version and exit</source>
        <translation>Показать версию и выйти</translation>
    </message>
    <message>
        <source>As JSON</source>
        <translation>В формате JSON</translation>
    </message>
    <message>
        <source>Show what the loyalty system grants a check; close nothing</source>
        <translation>Показать, что система лояльности даёт чеку; ничего не закрывать</translation>
    </message>
    <message>
        <source>Check file</source>
        <translation>Файл чека</translation>
    </message>
    <message>
        <source>Sell a check and print its slip</source>
        <translation>Продать и напечатать чек</translation>
    </message>
    <message>
        <source>Pay with so many points, or with &quot;all&quot;</source>
        <translation>Оплатить стольким числом баллов или всеми: all</translation>
    </message>
    <message>
        <source>Cash handed over; otherwise the check is paid exactly</source>
        <translation>Внесённые наличные; без ключа чек оплачен без сдачи</translation>
    </message>
    <message>
        <source>Wait so many seconds for the delivery</source>
        <translation>Столько секунд ждать доставки</translation>
    </message>
    <message>
        <source>Return goods of a closed sale and print the slip</source>
        <translation>Вернуть товары закрытой продажи и напечатать чек</translation>
    </message>
    <message>
        <source>Check file of the return</source>
        <translation>Файл чека возврата</translation>
    </message>
    <message>
        <source>Read a cashier&apos;s commands from the standard input</source>
        <translation>Читать команды кассира из стандартного ввода</translation>
    </message>
    <message>
        <source>There is no check "%1"; look at the list of checks.</source>
        <translation>Чека «%1» нет; посмотрите список чеков.</translation>
    </message>
    <message>
        <source>There is no closed sale "%1" here; an older one is taken back with "return --archive".</source>
        <translation>Закрытой продажи «%1» здесь нет; более старую возвращают командой "return --archive".</translation>
    </message>
    <message>
        <source>The sale was on %1, and goods are taken back for so many days: %2 (returnDays of [till]); "return --archive" takes them back all the same.</source>
        <translation>Продажа была %1, а товар принимают обратно столько дней: %2 (returnDays в [till]); "return --archive" примет его всё равно.</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2.</source>
        <translation>%1 не записывается: %2.</translation>
    </message>
    <message>
        <source>%1 is shorter than it was; put a copy of it back, or ask for help.</source>
        <translation>%1 короче, чем был; верните на место его копию или обратитесь за помощью.</translation>
    </message>
    <message>
        <source>The archive %1 cannot be read: %2.</source>
        <translation>Архив %1 не читается: %2.</translation>
    </message>
    <message>
        <source>The archive %1 is damaged; put a copy of it back, or ask for help.</source>
        <translation>Архив %1 повреждён; верните на место его копию или обратитесь за помощью.</translation>
    </message>
    <message>
        <source>The folder %1 cannot be made; see to the rights of the one that it stands in.</source>
        <translation>Каталог %1 не создаётся; проверьте права на каталог, в котором он должен быть.</translation>
    </message>
    <message>
        <source>Check %1 was changed while it went into the archive; it stays.</source>
        <translation>Чек %1 изменили, пока он уходил в архив; он остаётся.</translation>
    </message>
    <message>
        <source>Another process works on the archive of %1; wait until it has ended.</source>
        <translation>С архивом %1 работает другой процесс; подождите, пока он закончит.</translation>
    </message>
    <message>
        <source>%1 is in use; its log stays as large as it is until everybody has closed it.</source>
        <translation>%1 открыт кем-то ещё; его журнал уменьшится, когда его все закроют.</translation>
    </message>
    <message>
        <source>Checks that went into the archive: %1.</source>
        <translation>Чеков ушло в архив: %1.</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Месяц</translation>
    </message>
    <message>
        <source>Checks</source>
        <translation>Чеки</translation>
    </message>
    <message>
        <source>Another process works on the archive of %1; erase again when it has ended.</source>
        <translation>С архивом %1 работает другой процесс; повторите удаление, когда он закончит.</translation>
    </message>
    <message>
        <source>%1 is damaged: %2.</source>
        <translation>%1 повреждён: %2.</translation>
    </message>
    <message>
        <source>Addresses of the queue hold a user's password; the copy can be made with --with-secrets only.</source>
        <translation>В адресах очереди есть пароль пользователя; копию можно сделать только с --with-secrets.</translation>
    </message>
    <message>
        <source>%1 is no copy that "backup" has made.</source>
        <translation>%1 — не копия, сделанная командой "backup".</translation>
    </message>
    <message>
        <source>%1 was made by a newer till; install that version.</source>
        <translation>%1 сделан более новой кассой; установите ту версию.</translation>
    </message>
    <message>
        <source>%1 is in use; end all tills and the service, then restore.</source>
        <translation>%1 занят; закройте все кассы и службу, затем восстановите.</translation>
    </message>
    <message>
        <source>%1 cannot be copied to %2; see to rights and room.</source>
        <translation>%1 не копируется в %2; проверьте права и свободное место.</translation>
    </message>
    <message>
        <source>Messages that were not delivered then: %1. The server may have them since; they are sent again, which books nothing twice.</source>
        <translation>Сообщений, не доставленных на тот момент: %1. Сервер мог получить их позже; они отправляются ещё раз, и дважды ничего не проводится.</translation>
    </message>
    <message>
        <source>The copy holds no credentials; run "orva-till queue reauthorize" before anything is delivered.</source>
        <translation>В копии нет учётных данных; до доставки выполните "orva-till queue reauthorize".</translation>
    </message>
    <message>
        <source>If this till has sold since then, ask whoever runs the loyalty server for the highest number of its checks, and restore again with --last-number.</source>
        <translation>Если эта касса с тех пор продавала, узнайте у тех, кто ведёт сервер лояльности, наибольший номер её чека и восстановите ещё раз с --last-number.</translation>
    </message>
    <message>
        <source>What was here before is kept as %1; checks that closed since then are in it.</source>
        <translation>Прежнее сохранено как %1; чеки, закрытые с тех пор, в нём.</translation>
    </message>
    <message>
        <source>%1 holds checks: %2, messages that are not delivered: %3.</source>
        <translation>В %1 чеков: %2, недоставленных сообщений: %3.</translation>
    </message>
    <message>
        <source>%1 is as it was on %2: checks: %3; the next one has the number %4.</source>
        <translation>%1 снова такой, каким был %2: чеков %3; у следующего номер %4.</translation>
    </message>
    <message>
        <source>Copy checks, queue and archive into one file, while selling goes on</source>
        <translation>Скопировать чеки, очередь и архив в один файл, не прерывая продаж</translation>
    </message>
    <message>
        <source>With the credentials of undelivered messages</source>
        <translation>С учётными данными недоставленных сообщений</translation>
    </message>
    <message>
        <source>Put a copy in the place of the books; what is there is kept</source>
        <translation>Поставить копию на место учёта; то, что есть, сохраняется</translation>
    </message>
    <message>
        <source>A file that "backup" has made</source>
        <translation>Файл, сделанный командой "backup"</translation>
    </message>
    <message>
        <source>The highest number of a check of this till that the server knows</source>
        <translation>Наибольший номер чека этой кассы, известный серверу</translation>
    </message>
    <message>
        <source>List the checks, the newest first</source>
        <translation>Показать список чеков, начиная с новых</translation>
    </message>
    <message>
        <source>So many checks; otherwise a page of 50</source>
        <translation>Столько чеков; иначе страница из 50</translation>
    </message>
    <message>
        <source>Go on behind this check, by its identifier</source>
        <translation>Продолжить после этого чека (по идентификатору)</translation>
    </message>
    <message>
        <source>All checks</source>
        <translation>Все чеки</translation>
    </message>
    <message>
        <source>However old the sale is, and from the archive too</source>
        <translation>Какой бы старой ни была продажа, и из архива тоже</translation>
    </message>
    <message>
        <source>Move old checks into the archive and list its months</source>
        <translation>Убрать старые чеки в архив и показать его месяцы</translation>
    </message>
    <message>
        <source>Write the database anew, once: a file of a former version
then gives back what is free in it</source>
        <translation>Один раз переписать базу: файл прежней версии
после этого отдаёт свободное место</translation>
    </message>
    <message>
        <source>List what the closed checks did to the points</source>
        <translation>Показать, как закрытые чеки изменили баллы</translation>
    </message>
    <message>
        <source>As comma-separated values</source>
        <translation>В формате CSV</translation>
    </message>
    <message>
        <source>The outgoing queue</source>
        <translation>Исходящая очередь</translation>
    </message>
    <message>
        <source>The message&apos;s number</source>
        <translation>Номер сообщения</translation>
    </message>
    <message>
        <source>List the messages to be delivered</source>
        <translation>Показать недоставленные сообщения</translation>
    </message>
    <message>
        <source>Delivered ones too</source>
        <translation>И доставленные тоже</translation>
    </message>
    <message>
        <source>Show a message, secrets hidden</source>
        <translation>Показать сообщение, скрыв секреты</translation>
    </message>
    <message>
        <source>Deliver what is due</source>
        <translation>Доставить всё, чему пришёл срок</translation>
    </message>
    <message>
        <source>Make a message due at once</source>
        <translation>Назначить сообщение к отправке сейчас же</translation>
    </message>
    <message>
        <source>Leave a message out until it is retried</source>
        <translation>Снять сообщение с отправки до команды retry</translation>
    </message>
    <message>
        <source>Take a parked message for delivered: the server has it</source>
        <translation>Считать снятое сообщение доставленным: оно есть на сервере</translation>
    </message>
    <message>
        <source>Put the configured credentials into undelivered messages</source>
        <translation>Подставить учётные данные из настроек в недоставленные сообщения</translation>
    </message>
    <message>
        <source>Reference cash desk for loyalty plug-ins</source>
        <translation>Образцовая касса для плагинов лояльности</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a sum from 0 with at most two decimals, such as 49.90.</source>
        <translation>«%1» — не сумма от 0 не более чем с двумя знаками после точки, например 49.90.</translation>
    </message>
    <message>
        <source>The loyalty system has no credentials; write user, password and apikey into the configuration.</source>
        <translation>У системы лояльности нет учётных данных; укажите в настройках user, password и apikey.</translation>
    </message>
    <message>
        <source>The loyalty system sent an impact that is not its own; it is left out.</source>
        <translation>Система лояльности прислала чужое воздействие; оно пропущено.</translation>
    </message>
    <message>
        <source>The loyalty system sent &quot;%1&quot; for line %2, which the check does not have; it is left out.</source>
        <translation>Система лояльности прислала «%1» для строки %2, которой в чеке нет; воздействие пропущено.</translation>
    </message>
    <message>
        <source>The loyalty system sent &quot;%1&quot; of %2 for line %3, of which %4 is left; it is left out.</source>
        <translation>Система лояльности прислала «%1» на %2 для строки %3, от которой остаётся %4; воздействие пропущено.</translation>
    </message>
    <message>
        <source>The loyalty system awards %1 points on line %2, which cannot be; they are left out.</source>
        <translation>Система лояльности начисляет баллы (%1) на строку %2, чего не может быть; они пропущены.</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Чек</translation>
    </message>
    <message>
        <source>Card</source>
        <translation>Карта</translation>
    </message>
    <message>
        <source>Earned</source>
        <translation>Начислено</translation>
    </message>
    <message>
        <source>Spent</source>
        <translation>Списано</translation>
    </message>
    <message>
        <source>Given back</source>
        <translation>Возвращено</translation>
    </message>
    <message>
        <source>Taken back</source>
        <translation>Отозвано</translation>
    </message>
    <message>
        <source>Plug-in metadata: %1 is no plug-in (%2); check the path.</source>
        <translation>Метаданные плагина: %1 — не плагин (%2); проверьте путь.</translation>
    </message>
    <message>
        <source>Plug-in metadata: %1 is a plug-in for &quot;%2&quot;, not for &quot;%3&quot; (class %4; %5); check the path.</source>
        <translation>Метаданные плагина: %1 — плагин для «%2», а не для «%3» (класс %4; %5); проверьте путь.</translation>
    </message>
    <message>
        <source>Plug-in contract: %1 was built for version %2 of the host&apos;s contract, this till has version %3; install the plug-in and the till of one release.</source>
        <translation>Договор плагина: %1 собран для версии %2 договора хоста, у этой кассы версия %3; установите плагин и кассу одного выпуска.</translation>
    </message>
    <message>
        <source>Plug-in loading: %1 cannot be loaded (%2); look for missing libraries and another Qt version.</source>
        <translation>Загрузка плагина: %1 не загружается (%2); проверьте, нет ли недостающих библиотек и другой версии Qt.</translation>
    </message>
    <message>
        <source>Plug-in loading: %1 gives no object (%2).</source>
        <translation>Загрузка плагина: %1 не даёт объекта (%2).</translation>
    </message>
    <message>
        <source>Plug-in cast: the class %1 of %2 does not answer as &quot;%3&quot; (%4); it was built for another host.</source>
        <translation>Приведение плагина: класс %1 из %2 не отзывается как «%3» (%4); он собран для другой системы.</translation>
    </message>
    <message>
        <source>Plug-in initialisation: %1 does not register (%2); another loyalty system has its code.</source>
        <translation>Инициализация плагина: %1 не зарегистрирован (%2); его код занят другой системой лояльности.</translation>
    </message>
    <message>
        <source>%1 is a return; use the command &quot;return&quot;.</source>
        <translation>%1 — возврат; используйте команду «return».</translation>
    </message>
    <message>
        <source>%1 is a sale; use the command &quot;sell&quot;.</source>
        <translation>%1 — продажа; используйте команду «sell».</translation>
    </message>
    <message>
        <source>open</source>
        <translation>открыт</translation>
    </message>
    <message>
        <source>suspended</source>
        <translation>отложен</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>закрыт</translation>
    </message>
    <message>
        <source>abandoned</source>
        <translation>отменён</translation>
    </message>
    <message>
        <source>damaged</source>
        <translation>повреждён</translation>
    </message>
    <message>
        <source>Check %1 has no card of this loyalty system; restore it with the one that it was suspended with.</source>
        <translation>В чеке %1 нет карты этой системы лояльности; возобновите его с той, с которой он отложен.</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Вид</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Состояние</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Изменён</translation>
    </message>
    <message>
        <source>return</source>
        <translation>возврат</translation>
    </message>
    <message>
        <source>sale</source>
        <translation>продажа</translation>
    </message>
    <message>
        <source>Delivering</source>
        <translation>Доставка</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 из %2</translation>
    </message>
    <message>
        <source>Message %1 is due now.</source>
        <translation>Сообщение %1 назначено к отправке.</translation>
    </message>
    <message>
        <source>Message %1 is parked.</source>
        <translation>Сообщение %1 снято с отправки.</translation>
    </message>
    <message>
        <source>The queue is empty.</source>
        <translation>Очередь пуста.</translation>
    </message>
    <message>
        <source>Nothing is to be delivered.</source>
        <translation>Доставлять нечего.</translation>
    </message>
    <message>
        <source>There is no message %1; look at &quot;queue list --all&quot;.</source>
        <translation>Сообщения %1 нет; посмотрите «queue list --all».</translation>
    </message>
    <message>
        <source>Another process is delivering this queue.</source>
        <translation>Эту очередь доставляет другой процесс.</translation>
    </message>
    <message>
        <source>Delivered: %1, parked: %2.</source>
        <translation>Доставлено: %1, снято с отправки: %2.</translation>
    </message>
    <message>
        <source>Handed over to the store: %1.</source>
        <translation>Передано хранилищу: %1.</translation>
    </message>
    <message>
        <source>There is no undelivered message %1; look at &quot;queue list&quot;.</source>
        <translation>Недоставленного сообщения %1 нет; посмотрите «queue list».</translation>
    </message>
    <message>
        <source>There is no parked message %1; look at &quot;queue list&quot;. Only what is parked can be settled.</source>
        <translation>Снятого с отправки сообщения %1 нет; посмотрите «queue list». Закрыть можно только снятое.</translation>
    </message>
    <message>
        <source>Message %1 counts as delivered.</source>
        <translation>Сообщение %1 считается доставленным.</translation>
    </message>
    <message numerus="yes">
        <source>%n messages go out with the configured credentials.</source>
        <translation>
            <numerusform>%n сообщение уйдёт с учётными данными из настроек.</numerusform>
            <numerusform>%n сообщения уйдут с учётными данными из настроек.</numerusform>
            <numerusform>%n сообщений уйдёт с учётными данными из настроек.</numerusform>
        </translation>
    </message>
    <message>
        <source>The queue is delivered.</source>
        <translation>Очередь доставлена.</translation>
    </message>
    <message>
        <source>Still to be delivered: %1 waiting, %2 paused, %3 parked.</source>
        <translation>Осталось доставить: ожидают — %1, приостановлены — %2, сняты с отправки — %3.</translation>
    </message>
    <message>
        <source>Position %1: %2 cannot be returned, of %3 sold %4 are left; write a smaller quantity.</source>
        <translation>Позиция %1: вернуть %2 нельзя, из проданных %3 осталось %4; укажите меньшее количество.</translation>
    </message>
    <message>
        <source>Position %1: pieces are returned in whole numbers.</source>
        <translation>Позиция %1: штуки возвращают целыми числами.</translation>
    </message>
    <message>
        <source>Position %1: the sale has no such line; it has %2.</source>
        <translation>Позиция %1: такой строки в продаже нет; строк в ней: %2.</translation>
    </message>
    <message>
        <source>%1 names no database; write database in [till] or use --database.</source>
        <translation>В %1 не указана база данных; укажите database в [till] или ключ --database.</translation>
    </message>
    <message>
        <source>%1 names no plug-in; write plugin in [till] or use --plugin.</source>
        <translation>В %1 не указан плагин; укажите plugin в [till] или ключ --plugin.</translation>
    </message>
    <message>
        <source>NUMBER</source>
        <translation>НОМЕР</translation>
    </message>
    <message>
        <source>POSITION QUANTITY</source>
        <translation>ПОЗИЦИЯ КОЛИЧЕСТВО</translation>
    </message>
    <message>
        <source>POSITION SUM</source>
        <translation>ПОЗИЦИЯ СУММА</translation>
    </message>
    <message>
        <source>SUM|all|none</source>
        <translation>СУММА|all|none</translation>
    </message>
    <message>
        <source>SUM</source>
        <translation>СУММА</translation>
    </message>
    <message>
        <source>[SECONDS]</source>
        <translation>[СЕКУНД]</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>ФАЙЛ</translation>
    </message>
    <message>
        <source>open a sale and present its card, if the file names one</source>
        <translation>открыть продажу и предъявить карту, если она есть в файле</translation>
    </message>
    <message>
        <source>present a card</source>
        <translation>предъявить карту</translation>
    </message>
    <message>
        <source>change a line&apos;s quantity</source>
        <translation>изменить количество в строке</translation>
    </message>
    <message>
        <source>change a line&apos;s price</source>
        <translation>изменить цену в строке</translation>
    </message>
    <message>
        <source>ask the loyalty system about the check as it stands</source>
        <translation>спросить систему лояльности о чеке в его нынешнем виде</translation>
    </message>
    <message>
        <source>pay with points</source>
        <translation>оплатить баллами</translation>
    </message>
    <message>
        <source>take cash</source>
        <translation>принять наличные</translation>
    </message>
    <message>
        <source>close the check and print its slip</source>
        <translation>закрыть и напечатать чек</translation>
    </message>
    <message>
        <source>take a suspended check up again</source>
        <translation>вернуться к отложенному чеку</translation>
    </message>
    <message>
        <source>give the check up</source>
        <translation>отменить чек</translation>
    </message>
    <message>
        <source>open a return against a closed sale</source>
        <translation>открыть возврат по закрытой продаже</translation>
    </message>
    <message>
        <source>show the check</source>
        <translation>показать чек</translation>
    </message>
    <message>
        <source>list the messages to be delivered</source>
        <translation>показать недоставленные сообщения</translation>
    </message>
    <message>
        <source>wait until the queue is delivered, %1 s at most</source>
        <translation>ждать доставки очереди, не дольше %1 с</translation>
    </message>
    <message>
        <source>list the commands</source>
        <translation>показать команды</translation>
    </message>
    <message>
        <source>Write it so: %1 %2</source>
        <translation>Пишите так: %1 %2</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; &quot;help&quot; lists them.</source>
        <translation>Команды «%1» нет; все команды покажет «help».</translation>
    </message>
    <message>
        <source>%1 is a return; open it with &quot;return&quot;.</source>
        <translation>%1 — возврат; откройте его командой «return».</translation>
    </message>
    <message>
        <source>%1 is a sale; open it with &quot;open&quot;.</source>
        <translation>%1 — продажа; откройте её командой «open».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a quantity with at most three decimals.</source>
        <translation>«%1» — не количество не более чем с тремя знаками после точки.</translation>
    </message>
    <message>
        <source>Suspended: %1</source>
        <translation>Отложен: %1</translation>
    </message>
    <message>
        <source>Nothing is to be delivered.
</source>
        <translation>Доставлять нечего.
</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds up to %2.</source>
        <translation>«%1» — не число секунд до %2.</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Команда</translation>
    </message>
    <message>
        <source>end the work; an open check is abandoned</source>
        <translation>закончить работу; открытый чек отменяется</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; did you mean &quot;%2&quot;?</source>
        <translation>Команды «%1» нет; возможно, имелась в виду «%2»?</translation>
    </message>
    <message>
        <source>There is no closed check &quot;%1&quot;; look at the list of checks.</source>
        <translation>Закрытого чека «%1» нет; посмотрите список чеков.</translation>
    </message>
    <message>
        <source>Several checks have the number %1; name the check by its identifier.</source>
        <translation>Номер %1 у нескольких чеков; укажите идентификатор чека.</translation>
    </message>
    <message>
        <source>Check the set-up; change nothing and book nothing</source>
        <translation>Проверить установку и настройки, ничего не меняя и не учитывая</translation>
    </message>
    <message>
        <source>Card to ask the server about; otherwise one of zeros</source>
        <translation>Карта, о которой спросить сервер; без ключа — из одних нулей</translation>
    </message>
    <message>
        <source>What was said to the loyalty system, recorded</source>
        <translation>Запись обмена с системой лояльности</translation>
    </message>
    <message>
        <source>List what was recorded</source>
        <translation>Показать, что записано</translation>
    </message>
    <message>
        <source>Show requests beside their answers</source>
        <translation>Показать запросы рядом с ответами</translation>
    </message>
    <message>
        <source>The record&apos;s number, such as 3, or 3.2 for its second exchange</source>
        <translation>Номер записи, например 3, или 3.2 для её второго обмена</translation>
    </message>
    <message>
        <source>Write records into one file</source>
        <translation>Выгрузить записи в один файл</translation>
    </message>
    <message>
        <source>The record&apos;s number, or &quot;all&quot;</source>
        <translation>Номер записи или все: all</translation>
    </message>
    <message>
        <source>The page is %1. It holds whole card numbers: hand it on with care.</source>
        <translation>Страница — %1. В ней полные номера карт: передавайте её осторожно.</translation>
    </message>
    <message>
        <source>The page is %1. Card numbers and names are masked.</source>
        <translation>Страница — %1. Номера карт и имена скрыты.</translation>
    </message>
    <message>
        <source>A page shows one record; name its number instead of &quot;%1&quot;.</source>
        <translation>Страница показывает одну запись; назовите её номер вместо «%1».</translation>
    </message>
    <message>
        <source>Check and queue are left out (%1).</source>
        <translation>Чека и очереди нет (%1).</translation>
    </message>
    <message>
        <source>The plug-in does not answer.</source>
        <translation>Плагин не отвечает.</translation>
    </message>
    <message>
        <source>A new file: one record as a page for a browser</source>
        <translation>Новый файл: одна запись страницей для браузера</translation>
    </message>
    <message>
        <source>A new file</source>
        <translation>Новый файл</translation>
    </message>
    <message>
        <source>Have the plug-in do it again, offline, and compare</source>
        <translation>Повторить с плагином без сети и сравнить</translation>
    </message>
    <message>
        <source>Show where the amounts on a closed check come from</source>
        <translation>Показать, откуда взялись суммы закрытого чека</translation>
    </message>
    <message>
        <source>The check&apos;s identifier or number, or &quot;last&quot;</source>
        <translation>Идентификатор или номер чека либо последний: last</translation>
    </message>
    <message>
        <source>http: everybody on the way can read the credentials</source>
        <translation>http: учётные данные может прочесть любой на пути</translation>
    </message>
    <message>
        <source>ends with &quot;/&quot;</source>
        <translation>оканчивается на «/»</translation>
    </message>
    <message>
        <source>%1 does not end with &quot;/&quot;; what is asked for is put right behind it</source>
        <translation>%1 не оканчивается на «/», а путь запроса дописывается сразу за ним</translation>
    </message>
    <message>
        <source>something stands behind &quot;?&quot; or &quot;#&quot; and goes out with every request</source>
        <translation>что-то стоит после «?» или «#» и уходит с каждым запросом</translation>
    </message>
    <message>
        <source>none</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>%1 stands for %2 seconds</source>
        <translation>%1 значит %2 секунд</translation>
    </message>
    <message>
        <source>%1 s: a slow answer is lost</source>
        <translation>%1 с: медленный ответ не дождутся</translation>
    </message>
    <message>
        <source>%1 s: so long a customer waits when the server is away</source>
        <translation>%1 с: столько ждёт покупатель, когда сервера нет</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>Адрес сервера</translation>
    </message>
    <message>
        <source>Server address, its end</source>
        <translation>Адрес сервера, окончание</translation>
    </message>
    <message>
        <source>Server address, query</source>
        <translation>Адрес сервера, параметры</translation>
    </message>
    <message>
        <source>Time-out</source>
        <translation>Время ожидания</translation>
    </message>
    <message>
        <source>not set: no proxy</source>
        <translation>не задан: без прокси</translation>
    </message>
    <message>
        <source>not set: the system&apos;s certificates</source>
        <translation>не задан: сертификаты системы</translation>
    </message>
    <message>
        <source>%1 is not there</source>
        <translation>%1 нет</translation>
    </message>
    <message>
        <source>%1, or a file that it names, is not read in time</source>
        <translation>%1 или файл, названный в нём, не прочитался вовремя</translation>
    </message>
    <message>
        <source>no secret can be read by others</source>
        <translation>посторонние не могут прочесть ни одного секрета</translation>
    </message>
    <message>
        <source>all tables and keys are known</source>
        <translation>все таблицы и ключи известны</translation>
    </message>
    <message>
        <source>set, not shown</source>
        <translation>задан, не показан</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>%1 не читается</translation>
    </message>
    <message>
        <source>%1 holds no certificate in PEM</source>
        <translation>в %1 нет сертификата PEM</translation>
    </message>
    <message>
        <source>not set</source>
        <translation>не задано</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>пусто</translation>
    </message>
    <message>
        <source>%1, from the command line</source>
        <translation>%1, из командной строки</translation>
    </message>
    <message>
        <source>Rights on secrets</source>
        <translation>Права на секреты</translation>
    </message>
    <message>
        <source>Names in the configuration</source>
        <translation>Имена в настройках</translation>
    </message>
    <message>
        <source>Key %1.%2</source>
        <translation>Ключ %1.%2</translation>
    </message>
    <message>
        <source>the folder %1 is not there</source>
        <translation>папки %1 нет</translation>
    </message>
    <message>
        <source>nothing can be written into %1</source>
        <translation>в %1 нельзя писать</translation>
    </message>
    <message>
        <source>%1 will be made by the first sale</source>
        <translation>%1 появится при первой продаже</translation>
    </message>
    <message>
        <source>%1 is no file that can be read and written</source>
        <translation>%1 — не файл, доступный для чтения и записи</translation>
    </message>
    <message>
        <source>only its owner may open it</source>
        <translation>открыть может только владелец</translation>
    </message>
    <message>
        <source>the free space is not known</source>
        <translation>свободное место неизвестно</translation>
    </message>
    <message>
        <source>%1 MiB are free</source>
        <translation>свободно %1 МиБ</translation>
    </message>
    <message>
        <source>the file is sound</source>
        <translation>файл исправен</translation>
    </message>
    <message>
        <source>version %1 of %2</source>
        <translation>версия %1 из %2</translation>
    </message>
    <message>
        <source>%1: a newer program has written the file</source>
        <translation>%1: файл записан более новой программой</translation>
    </message>
    <message>
        <source>%1 is no till&apos;s database</source>
        <translation>%1 — не база данных кассы</translation>
    </message>
    <message>
        <source>%1; brought up to date by the next sale</source>
        <translation>%1; обновится при следующей продаже</translation>
    </message>
    <message>
        <source>nothing waits</source>
        <translation>ничего не ждёт</translation>
    </message>
    <message>
        <source>waiting: %1, the oldest (%2) since %3</source>
        <translation>ожидают: %1, старейшее (%2) — с %3</translation>
    </message>
    <message>
        <source>waiting for other credentials or another address: %1 (%2)</source>
        <translation>ждут других учётных данных или другого адреса: %1 (%2)</translation>
    </message>
    <message>
        <source>waiting for somebody to decide: %1 (%2)</source>
        <translation>ждут решения человека: %1 (%2)</translation>
    </message>
    <message>
        <source>Database</source>
        <translation>База данных</translation>
    </message>
    <message>
        <source>Database, rights</source>
        <translation>База данных, права</translation>
    </message>
    <message>
        <source>not made yet</source>
        <translation>ещё не создана</translation>
    </message>
    <message>
        <source>Disk</source>
        <translation>Диск</translation>
    </message>
    <message>
        <source>Database, content</source>
        <translation>База данных, содержимое</translation>
    </message>
    <message>
        <source>is not read in time</source>
        <translation>не прочиталась вовремя</translation>
    </message>
    <message>
        <source>Database, version</source>
        <translation>База данных, версия</translation>
    </message>
    <message>
        <source>Queue, waiting</source>
        <translation>Очередь, ожидают</translation>
    </message>
    <message>
        <source>Queue, paused</source>
        <translation>Очередь, приостановлены</translation>
    </message>
    <message>
        <source>Queue, parked</source>
        <translation>Очередь, сняты с отправки</translation>
    </message>
    <message>
        <source>the way to the server does not come to an end</source>
        <translation>проверка пути к серверу не заканчивается</translation>
    </message>
    <message>
        <source>%1 is no file that can be read</source>
        <translation>%1 — не файл, доступный для чтения</translation>
    </message>
    <message>
        <source>no plug-in (%1)</source>
        <translation>не плагин (%1)</translation>
    </message>
    <message>
        <source>a plug-in for &quot;%1&quot;, not for &quot;%2&quot;</source>
        <translation>плагин для «%1», а не для «%2»</translation>
    </message>
    <message>
        <source>class %1</source>
        <translation>класс %1</translation>
    </message>
    <message>
        <source>debug build</source>
        <translation>отладочная сборка</translation>
    </message>
    <message>
        <source>release build</source>
        <translation>рабочая сборка</translation>
    </message>
    <message>
        <source>made with Qt %1 (%2), here is Qt %3</source>
        <translation>собран с Qt %1 (%2), здесь Qt %3</translation>
    </message>
    <message>
        <source>not known, since the plug-in is still loading</source>
        <translation>неизвестно: плагин ещё загружается</translation>
    </message>
    <message>
        <source>%1 is not found</source>
        <translation>не найдено: %1</translation>
    </message>
    <message>
        <source>all are found</source>
        <translation>все найдены</translation>
    </message>
    <message>
        <source>with all its symbols</source>
        <translation>со всеми символами</translation>
    </message>
    <message>
        <source>not known, since the plug-in does not get ready</source>
        <translation>неизвестно: плагин не становится готовым</translation>
    </message>
    <message>
        <source>the plug-in has registered</source>
        <translation>плагин зарегистрировался</translation>
    </message>
    <message>
        <source>without Log4Qt, to Qt&apos;s category orva</source>
        <translation>без Log4Qt, в категорию Qt orva</translation>
    </message>
    <message>
        <source>with Log4Qt (%1)</source>
        <translation>через Log4Qt (%1)</translation>
    </message>
    <message>
        <source>%1, whose errors are switched off</source>
        <translation>%1, ошибки в ней выключены</translation>
    </message>
    <message>
        <source>does not come to an end in time</source>
        <translation>не закончилось вовремя</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>Плагин</translation>
    </message>
    <message>
        <source>Plug-in, its kind</source>
        <translation>Плагин, вид</translation>
    </message>
    <message>
        <source>Plug-in, Qt</source>
        <translation>Плагин, Qt</translation>
    </message>
    <message>
        <source>Plug-in, libraries</source>
        <translation>Плагин, библиотеки</translation>
    </message>
    <message>
        <source>Plug-in, loading</source>
        <translation>Плагин, загрузка</translation>
    </message>
    <message>
        <source>Plug-in, this host</source>
        <translation>Плагин, эта касса</translation>
    </message>
    <message>
        <source>Plug-in, readiness</source>
        <translation>Плагин, готовность</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Журнал</translation>
    </message>
    <message>
        <source>Check of the set-up</source>
        <translation>Проверка установки</translation>
    </message>
    <message>
        <source>ok</source>
        <translation>ок</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>внимание</translation>
    </message>
    <message>
        <source>fails</source>
        <translation>неудача</translation>
    </message>
    <message>
        <source>skipped</source>
        <translation>пропущено</translation>
    </message>
    <message>
        <source>&quot;%1&quot; comes first</source>
        <translation>сначала «%1»</translation>
    </message>
    <message>
        <source>%1 checks: %2 ok, %3 with a warning, %4 failed, %5 skipped.
</source>
        <translation>Проверок: %1; в порядке — %2, с предупреждением — %3, неудач — %4, пропущено — %5.
</translation>
    </message>
    <message>
        <source>the proxy looks the name up</source>
        <translation>имя узнаёт прокси</translation>
    </message>
    <message>
        <source>no proxy is configured</source>
        <translation>прокси не настроен</translation>
    </message>
    <message>
        <source>%1 does not let through (%2)</source>
        <translation>%1 не пропускает (%2)</translation>
    </message>
    <message>
        <source>the proxy connects when it is asked</source>
        <translation>прокси соединяет, когда его просят</translation>
    </message>
    <message>
        <source>%1, port %2, after %3 ms</source>
        <translation>%1, порт %2, через %3 мс</translation>
    </message>
    <message>
        <source>http has no certificate</source>
        <translation>у http нет сертификата</translation>
    </message>
    <message>
        <source>the certificate is trusted</source>
        <translation>сертификату можно доверять</translation>
    </message>
    <message>
        <source>valid until %1</source>
        <translation>действителен до %1</translation>
    </message>
    <message>
        <source>Proxy</source>
        <translation>Прокси</translation>
    </message>
    <message>
        <source>Server&apos;s name</source>
        <translation>Имя сервера</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Соединение</translation>
    </message>
    <message>
        <source>Server&apos;s certificate</source>
        <translation>Сертификат сервера</translation>
    </message>
    <message>
        <source>Certificate&apos;s end</source>
        <translation>Срок сертификата</translation>
    </message>
    <message>
        <source>the question does not come to an end in time</source>
        <translation>запрос не закончился вовремя</translation>
    </message>
    <message>
        <source>the plug-in has asked nothing (%1)</source>
        <translation>плагин ничего не спросил (%1)</translation>
    </message>
    <message>
        <source>HTTP %1 after %2 ms</source>
        <translation>HTTP %1 через %2 мс</translation>
    </message>
    <message>
        <source>refused (HTTP %1); user, password or key is wrong</source>
        <translation>отказано (HTTP %1); неверны пользователь, пароль или ключ</translation>
    </message>
    <message>
        <source>accepted</source>
        <translation>приняты</translation>
    </message>
    <message>
        <source>the loyalty service answers</source>
        <translation>служба лояльности отвечает</translation>
    </message>
    <message>
        <source>HTTP %1: the loyalty service is not at this address</source>
        <translation>HTTP %1: по этому адресу службы лояльности нет</translation>
    </message>
    <message>
        <source>the proxy wants credentials (HTTP %1)</source>
        <translation>прокси требует учётные данные (HTTP %1)</translation>
    </message>
    <message>
        <source>HTTP %1: the server cannot answer a pre-check</source>
        <translation>HTTP %1: сервер не может ответить о чеке</translation>
    </message>
    <message>
        <source>the plug-in understands the answer</source>
        <translation>плагин понимает ответ</translation>
    </message>
    <message>
        <source>the plug-in does not understand the answer (%1)</source>
        <translation>плагин не понимает ответа (%1)</translation>
    </message>
    <message>
        <source>no card was named; &quot;orva-till doctor --card NUMBER&quot; asks about one</source>
        <translation>карта не названа; о карте спросит «orva-till doctor --card НОМЕР»</translation>
    </message>
    <message>
        <source>the server refuses the card (HTTP %1)</source>
        <translation>сервер не принимает карту (HTTP %1)</translation>
    </message>
    <message>
        <source>the server does not tell its time</source>
        <translation>сервер не сообщает своё время</translation>
    </message>
    <message>
        <source>%1 s behind the server&apos;s</source>
        <translation>отстают от часов сервера на %1 с</translation>
    </message>
    <message>
        <source>%1 s ahead of the server&apos;s</source>
        <translation>опережают часы сервера на %1 с</translation>
    </message>
    <message>
        <source>Server&apos;s answer</source>
        <translation>Ответ сервера</translation>
    </message>
    <message>
        <source>Till&apos;s clock</source>
        <translation>Часы кассы</translation>
    </message>
    <message>
        <source>Credentials</source>
        <translation>Учётные данные</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Служба</translation>
    </message>
    <message>
        <source>Pre-check</source>
        <translation>Запрос о чеке</translation>
    </message>
    <message>
        <source>the locale of the environment is not installed</source>
        <translation>локаль, указанная в окружении, не установлена</translation>
    </message>
    <message>
        <source>%1; texts and file names need UTF-8</source>
        <translation>%1; текстам и именам файлов нужна UTF-8</translation>
    </message>
    <message>
        <source>Encoding</source>
        <translation>Кодировка</translation>
    </message>
    <message>
        <source>the answer has no such message</source>
        <translation>в ответе такого сообщения нет</translation>
    </message>
    <message>
        <source>the message &quot;%1&quot; (%2, line %3) is not on the check</source>
        <translation>сообщения «%1» (%2, строка %3) в чеке нет</translation>
    </message>
    <message>
        <source>%1 %2, the check has %3: %4 too much</source>
        <translation>%1 %2, в чеке %3: лишние %4</translation>
    </message>
    <message>
        <source>%1 %2, the check has %3: %4 too little</source>
        <translation>%1 %2, в чеке %3: не хватает %4</translation>
    </message>
    <message>
        <source>the answer says</source>
        <translation>в ответе сказано</translation>
    </message>
    <message>
        <source>record %1, exchange %2 of %3</source>
        <translation>запись %1, обмен %2 от %3</translation>
    </message>
    <message>
        <source>the answer as the check keeps it</source>
        <translation>ответ, каким его хранит чек</translation>
    </message>
    <message>
        <source>the recorded answer is not the one that the check keeps: %1 (line %2) is &quot;%3&quot; and was &quot;%4&quot;</source>
        <translation>записанный ответ — не тот, что хранит чек: %1 (строка %2) равно «%3», а было «%4»</translation>
    </message>
    <message>
        <source>message %1 of the queue</source>
        <translation>сообщение %1 очереди</translation>
    </message>
    <message>
        <source>Nothing was recorded for check %1, and it keeps no answer itself; name a folder in [recording] of %2 and later checks can be explained.</source>
        <translation>Для чека %1 ничего не записано, и сам он ответа не хранит; укажите папку в [recording] файла %2, и следующие чеки можно будет объяснить.</translation>
    </message>
    <message>
        <source>Points spent</source>
        <translation>Баллов списано</translation>
    </message>
    <message>
        <source>Points earned</source>
        <translation>Баллов начислено</translation>
    </message>
    <message>
        <source>Points earned as the loyalty system counts</source>
        <translation>Баллов начислено по счёту системы лояльности</translation>
    </message>
    <message>
        <source>Points given back</source>
        <translation>Баллов возвращено</translation>
    </message>
    <message>
        <source>Points taken back</source>
        <translation>Баллов отозвано</translation>
    </message>
    <message>
        <source>Balance before this check</source>
        <translation>Остаток до этого чека</translation>
    </message>
    <message>
        <source>Money</source>
        <translation>Деньги</translation>
    </message>
    <message>
        <source>To the cashier</source>
        <translation>Кассиру</translation>
    </message>
    <message>
        <source>To the customer</source>
        <translation>Покупателю</translation>
    </message>
    <message>
        <source>answer</source>
        <translation>ответ</translation>
    </message>
    <message>
        <source>confirmation</source>
        <translation>подтверждение</translation>
    </message>
    <message>
        <source>answer to the sale</source>
        <translation>ответ о продаже</translation>
    </message>
    <message>
        <source>      %1, line %2: %3: &quot;%4&quot;
</source>
        <translation>      %1, строка %2: %3: «%4»
</translation>
    </message>
    <message>
        <source>    ! Not explained: %1.
</source>
        <translation>    ! Не объяснено: %1.
</translation>
    </message>
    <message>
        <source>Closed without the loyalty system; nothing on it comes from an answer.
</source>
        <translation>Закрыт без системы лояльности; ничего из ответов в нём нет.
</translation>
    </message>
    <message>
        <source>Answer: none; the server was not asked.
</source>
        <translation>Ответ: нет; сервер не спрашивали.
</translation>
    </message>
    <message>
        <source>Answer: %1
</source>
        <translation>Ответ: %1
</translation>
    </message>
    <message>
        <source>No readable answer to this check was recorded: paths and texts are those of the answer, the lines are not the server&apos;s. Name a folder in [recording] of the configuration to have answers kept as they came.
</source>
        <translation>Читаемого ответа об этом чеке не записано: пути и тексты — из ответа, а номера строк — не сервера. Укажите папку в [recording] настроек, чтобы ответы сохранялись такими, какими пришли.
</translation>
    </message>
    <message>
        <source>Confirmation: none is left; it is not compared.
</source>
        <translation>Подтверждение: не сохранилось; не сравнивается.
</translation>
    </message>
    <message>
        <source>Confirmation: %1
</source>
        <translation>Подтверждение: %1
</translation>
    </message>
    <message numerus="yes">
        <source>%n do not agree.
</source>
        <translation>
            <numerusform>Не сходится %n сумма.
</numerusform>
            <numerusform>Не сходятся %n суммы.
</numerusform>
            <numerusform>Не сходится %n сумм.
</numerusform>
        </translation>
    </message>
    <message>
        <source>All %1 amounts and messages are explained; the sums agree.
</source>
        <translation>Объяснены все суммы и сообщения (%1); итоги сходятся.
</translation>
    </message>
    <message>
        <source>The whole check
</source>
        <translation>Весь чек
</translation>
    </message>
    <message>
        <source>Line %1, %2, %3
</source>
        <translation>Строка %1, %2, %3
</translation>
    </message>
    <message>
        <source>%1 No %2, check %3
</source>
        <translation>%1 № %2, чек %3
</translation>
    </message>
    <message>
        <source>! %1.
</source>
        <translation>! %1.
</translation>
    </message>
    <message>
        <source>%1 of the sale × %2 / %3, less what was returned before</source>
        <translation>%1 продажи × %2 / %3 за вычетом возвращённого раньше</translation>
    </message>
    <message>
        <source>the sale&apos;s amount is not explained itself</source>
        <translation>сама сумма продажи не объяснена</translation>
    </message>
    <message>
        <source>the share of the sale is</source>
        <translation>доля продажи составляет</translation>
    </message>
    <message>
        <source>the server takes back</source>
        <translation>сервер отзывает</translation>
    </message>
    <message>
        <source>the confirmation says</source>
        <translation>в подтверждении сказано</translation>
    </message>
    <message>
        <source>the sum of the lines</source>
        <translation>сумма строк</translation>
    </message>
    <message>
        <source>goods %1 less discount %2 less points %3</source>
        <translation>товары %1 минус скидка %2 минус баллы %3</translation>
    </message>
    <message>
        <source>the answer cannot be read to its end (%1)</source>
        <translation>ответ не читается до конца (%1)</translation>
    </message>
    <message>
        <source>the answer grants</source>
        <translation>ответ даёт</translation>
    </message>
    <message>
        <source>chosen at the till, of %1 that the answer allows</source>
        <translation>выбрано на кассе из %1, разрешённых ответом</translation>
    </message>
    <message>
        <source>the answer allows no more than</source>
        <translation>ответ разрешает не больше чем</translation>
    </message>
    <message>
        <source>%1 × %2 / %3, what is paid in money of what is to be paid</source>
        <translation>%1 × %2 / %3: доля, оплаченная деньгами</translation>
    </message>
    <message>
        <source>from the answer follow</source>
        <translation>из ответа следует</translation>
    </message>
    <message>
        <source>the document&apos;s impacts make</source>
        <translation>воздействия документа дают</translation>
    </message>
    <message>
        <source>the answer grants %1 on line %2 (%3, line %4 of the answer), which the check does not have</source>
        <translation>ответ даёт %1 на строку %2 (%3, строка %4 ответа), которой в чеке нет</translation>
    </message>
    <message>
        <source>each line&apos;s points × %1 / %2, unrounded, summed</source>
        <translation>баллы каждой строки × %1 / %2, без округления, в сумме</translation>
    </message>
    <message>
        <source>There are no records.</source>
        <translation>Записей нет.</translation>
    </message>
    <message>
        <source>%1 cannot be read (%2); check path and rights.</source>
        <translation>%1 не читается (%2); проверьте путь и права.</translation>
    </message>
    <message>
        <source>Record %1, %2: </source>
        <translation>Запись %1, %2: </translation>
    </message>
    <message>
        <source>another build of the plug-in: </source>
        <translation>другая сборка плагина: </translation>
    </message>
    <message>
        <source>cut off, replayed as far as it goes: </source>
        <translation>обрывается, повторена до обрыва: </translation>
    </message>
    <message numerus="yes">
        <source>%n calls, %1 sent, identical.
</source>
        <translation>
            <numerusform>%n вызов, отправлено — %1, совпадает.
</numerusform>
            <numerusform>%n вызова, отправлено — %1, совпадает.
</numerusform>
            <numerusform>%n вызовов, отправлено — %1, совпадает.
</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of %2 calls differ.
</source>
        <translation>расходятся вызовы: %1 из %2.
</translation>
    </message>
    <message>
        <source>Nothing is recorded; write folder in [recording] of %1, or name a file that was exported.</source>
        <translation>Ничего не записано; укажите folder в [recording] файла %1 или назовите выгруженный файл.</translation>
    </message>
    <message>
        <source>Record %1 has no exchange %2; look at &quot;log list&quot;.</source>
        <translation>В записи %1 нет обмена %2; посмотрите «log list».</translation>
    </message>
    <message>
        <source>There is no record %1 in %2; look at &quot;log list&quot;.</source>
        <translation>Записи %1 в %2 нет; посмотрите «log list».</translation>
    </message>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>%1 не записывается (%2).</translation>
    </message>
    <message numerus="yes">
        <source>%n records are in %1. It holds whole card numbers: hand it on with care.</source>
        <translation>
            <numerusform>%n запись теперь в %1. Номера карт в ней целиком: передавайте файл осторожно.</numerusform>
            <numerusform>%n записи теперь в %1. Номера карт в них целиком: передавайте файл осторожно.</numerusform>
            <numerusform>%n записей теперь в %1. Номера карт в них целиком: передавайте файл осторожно.</numerusform>
        </translation>
    </message>
    <message>
        <source>Record %1 of %2: %3
</source>
        <translation>Запись %1 от %2: %3
</translation>
    </message>
    <message>
        <source>Check %1, plug-in %2 (build %3), program %4
</source>
        <translation>Чек %1, плагин %2 (сборка %3), программа %4
</translation>
    </message>
    <message>
        <source>The record was cut off.
</source>
        <translation>Запись обрывается.
</translation>
    </message>
    <message>
        <source>throws %1</source>
        <translation>исключение %1</translation>
    </message>
    <message>
        <source>%1. %2 at %3, %4 ms: %5
</source>
        <translation>%1. %2 в %3, %4 мс: %5
</translation>
    </message>
    <message>
        <source>Message %1 into the queue &quot;%2&quot;: %3
</source>
        <translation>Сообщение %1 в очередь «%2»: %3
</translation>
    </message>
    <message>
        <source>Exchange %1: POST %2: %3, %4 ms
</source>
        <translation>Обмен %1: POST %2: %3, %4 мс
</translation>
    </message>
    <message>
        <source>Request</source>
        <translation>Запрос</translation>
    </message>
    <message>
        <source>Answer</source>
        <translation>Ответ</translation>
    </message>
    <message>
        <source>not queued</source>
        <translation>не принято</translation>
    </message>
    <message>
        <source>queued</source>
        <translation>принято</translation>
    </message>
    <message>
        <source>%1 No %2</source>
        <translation>%1 № %2</translation>
    </message>
    <message>
        <source>, card %1</source>
        <translation>, карта %1</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Запись</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>Call</source>
        <translation>Вызов</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>Итог</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>мс</translation>
    </message>
    <message>
        <source>%1, line %2: %3.</source>
        <translation>%1, строка %2: %3.</translation>
    </message>
    <message>
        <source>this is no recording</source>
        <translation>это не запись</translation>
    </message>
    <message>
        <source>the recording was written by a newer till; use that one</source>
        <translation>запись сделана более новой кассой; откройте её в ней</translation>
    </message>
    <message>
        <source>the documents are not in order</source>
        <translation>документы не в порядке</translation>
    </message>
    <message>
        <source>this is no line of a record</source>
        <translation>это не строка записи</translation>
    </message>
    <message>
        <source>(the same elements, written otherwise)</source>
        <translation>(те же элементы, записанные иначе)</translation>
    </message>
    <message>
        <source>%1 (line %2)</source>
        <translation>%1 (строка %2)</translation>
    </message>
    <message>
        <source>call %1, %2: %3: recorded %4, now %5</source>
        <translation>вызов %1, %2: %3: записано %4, теперь %5</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>ничего</translation>
    </message>
    <message>
        <source>The recording has a gap (%1); the sale is not concerned.</source>
        <translation>В записи пробел (%1); продажи это не касается.</translation>
    </message>
    <message>
        <source>%1 cannot be written (%2)</source>
        <translation>%1 не записывается (%2)</translation>
    </message>
    <message>
        <source>the folder %1 cannot be made</source>
        <translation>папку %1 создать не удаётся</translation>
    </message>
    <message>
        <source>one record alone is larger than recording.maxMegabytes</source>
        <translation>одна запись больше, чем recording.maxMegabytes</translation>
    </message>
    <message>
        <source>The record is damaged: the call &quot;%1&quot; has no card.</source>
        <translation>Запись повреждена: в вызове «%1» нет карты.</translation>
    </message>
    <message>
        <source>The record has a call &quot;%1&quot;, which this till does not know; replay it with the till that recorded it.</source>
        <translation>В записи есть вызов «%1», которого эта касса не знает; повторите её на той кассе, которая её сделала.</translation>
    </message>
    <message>
        <source>not set: no store, the till delivers itself</source>
        <translation>не задано: хранилища нет, касса доставляет сама</translation>
    </message>
    <message>
        <source>not set: no password</source>
        <translation>не задано: без пароля</translation>
    </message>
    <message>
        <source>not set: the shop without a name</source>
        <translation>не задано: магазин без имени</translation>
    </message>
    <message>
        <source>not set: the one of the package orva-store</source>
        <translation>не задано: из пакета orva-store</translation>
    </message>
    <message>
        <source>not set: messages wait for the store</source>
        <translation>не задано: сообщения ждут хранилища</translation>
    </message>
    <message>
        <source>not set: no server is tried</source>
        <translation>не задано: сервер не проверяется</translation>
    </message>
    <message>
        <source>not set: what needs one is not tried</source>
        <translation>не задано: что её требует, не проверяется</translation>
    </message>
    <message>
        <source>not set: nothing is recorded</source>
        <translation>не задано: ничего не записывается</translation>
    </message>
    <message>
        <source>Replaying</source>
        <translation>Повтор</translation>
    </message>
    <message>
        <source>%1, without an appender: to the till&apos;s console, by Qt&apos;s category orva</source>
        <translation>%1, для неё не настроен вывод: на консоль кассы, по категории orva в Qt</translation>
    </message>
    <message>
        <source>%1, without an appender: its lines are lost</source>
        <translation>%1, для неё не настроен вывод: её строки пропадают</translation>
    </message>
    <message>
        <source>%1, by %2, to %3</source>
        <translation>%1, по файлу %2, сюда: %3</translation>
    </message>
    <message>
        <source>%1, but switched off</source>
        <translation>%1, но выключено</translation>
    </message>
    <message>
        <source>%1, but every start empties %2</source>
        <translation>%1, но при каждом запуске %2 очищается</translation>
    </message>
    <message>
        <source>Exit codes: 0 no check fails, 1 a check fails, 2 the command line cannot be used, 5 not all
could be written. Ends in less than 5 seconds, with --fix after each mend anew.</source>
        <translation>Коды завершения: 0 — неудач нет, 1 — есть неудачи, 2 — не годится командная строка,
5 — показано не всё. Длится меньше 5 секунд, с --fix — после каждого исправления заново.</translation>
    </message>
    <message>
        <source>What is shown is not whole: %1.</source>
        <translation>Показано не всё: %1.</translation>
    </message>
    <message>
        <source>The check is closed all the same: %1.</source>
        <translation>Чек всё равно закрыт: %1.</translation>
    </message>
    <message>
        <source>The work ends here; &quot;orva-till checks&quot; lists what is closed.</source>
        <translation>Работа на этом окончена; что закрыто, покажет «orva-till checks».</translation>
    </message>
    <message>
        <source>no number is left in %1; move its records elsewhere</source>
        <translation>в %1 не осталось номеров; перенесите записи в другое место</translation>
    </message>
    <message>
        <source>Waiting for %1, %2 s at most</source>
        <translation>Ожидание ответа: %1, не более %2 с</translation>
    </message>
    <message>
        <source>%1 is no regular file; name a check file.</source>
        <translation>%1 не обычный файл; укажите файл чека.</translation>
    </message>
    <message>
        <source>%1 is larger than %2 bytes, the most that a check file may have; split the check.</source>
        <translation>%1 больше %2 байт, файлу чека больше не положено; разделите чек.</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>не хватает памяти</translation>
    </message>
    <message>
        <source>%1, line %2: tables and lists are nested deeper than %3 levels; look at the dots and brackets.</source>
        <translation>%1, строка %2: таблицы и списки вложены глубже %3 уровней; проверьте точки и скобки.</translation>
    </message>
    <message>
        <source>%1 is no regular file of at most %2 bytes; name an exported recording.</source>
        <translation>%1 не обычный файл или больше %2 байт; укажите выгруженную запись.</translation>
    </message>
    <message>
        <source>not set: %1 seconds</source>
        <translation>не задано: %1 секунд</translation>
    </message>
    <message>
        <source>not set: %1 days</source>
        <translation>не задано: %1 дней</translation>
    </message>
    <message>
        <source>not set: %1 megabytes</source>
        <translation>не задано: %1 мегабайт</translation>
    </message>
    <message>
        <source>not set: %1 bytes</source>
        <translation>не задано: %1 байт</translation>
    </message>
    <message>
        <source>not set: %1 at a time</source>
        <translation>не задано: по %1</translation>
    </message>
    <message>
        <source>not set: %1</source>
        <translation>не задано: %1</translation>
    </message>
    <message>
        <source>no key sheet beside the plug-in says which key this is</source>
        <translation>рядом с плагином нет описания ключей, где сказано, какой это ключ</translation>
    </message>
    <message>
        <source>Go on delivering whatever comes, until stopped; for a service</source>
        <translation>Доставлять всё, что появится, пока не остановят; для службы</translation>
    </message>
    <message>
        <source>Delivering the queue of %1 until stopped.</source>
        <translation>Очередь %1 доставляется, пока программу не остановят.</translation>
    </message>
    <message>
        <source>Signals cannot be waited for (%1); try again.</source>
        <translation>Нельзя ждать сигналов (%1); попробуйте ещё раз.</translation>
    </message>
    <message>
        <source>Configuration file; otherwise orva.toml here, or /etc/orva/orva.toml</source>
        <translation>Файл настроек; иначе orva.toml в текущей папке или /etc/orva/orva.toml</translation>
    </message>
    <message>
        <source>Ask for the settings of a till, try them and write them</source>
        <translation>Спросить настройки кассы, проверить их и записать</translation>
    </message>
    <message>
        <source>File of answers, a line each: address, shop, desk, user, password, key;
otherwise asked for, or read from the standard input</source>
        <translation>Файл ответов, по строке: адрес, магазин, касса, пользователь, пароль, ключ;
иначе спрашиваются или читаются из стандартного ввода</translation>
    </message>
    <message>
        <source>Ask nothing: &quot;simulator&quot;, the server for trying</source>
        <translation>Не спрашивать: «simulator» — учебный сервер</translation>
    </message>
    <message>
        <source>Try nothing: the server is away</source>
        <translation>Ничего не проверять: сервера пока нет</translation>
    </message>
    <message>
        <source>Writes over nothing. Exit codes: 0 written, or there already; 1 an answer does not work, or
nothing can be written; 2 an answer is missing; 6 there are other settings.</source>
        <translation>Ничего не перезаписывает. Коды завершения: 0 записано или уже есть; 1 ответ не работает или записать
нельзя; 2 нет ответа; 6 уже есть другие настройки.</translation>
    </message>
    <message>
        <source>Exit codes: 0 done, 1 failed, 2 command line or file cannot be used, 3 the sale went on
without the loyalty system, 4 a replay differs from its record, or a check from its
explanation, 5 done, but not all could be written to the standard output, 6 other settings
are there already.</source>
        <translation>Коды завершения: 0 — готово, 1 — не удалось, 2 — не годится командная строка или файл,
3 — продажа прошла без системы лояльности, 4 — повтор разошёлся с записью или чек с его
объяснением, 5 — готово, но показано не всё: стандартный вывод не записывается, 6 — уже есть
другие настройки.</translation>
    </message>
    <message>
        <source>Settings: %1</source>
        <translation>Настройки: %1</translation>
    </message>
    <message>
        <source>only its owner and the folder&apos;s group may open it</source>
        <translation>открыть могут только владелец и группа папки</translation>
    </message>
    <message>
        <source>Settings of a till, to be written to %1</source>
        <translation>Настройки кассы, они будут записаны в %1</translation>
    </message>
    <message>
        <source>The server takes user, password and key.</source>
        <translation>Сервер принимает пользователя, пароль и ключ.</translation>
    </message>
    <message>
        <source>There are other settings already, and nothing was written. Change in %1 what shall change, or move it away.</source>
        <translation>Уже есть другие настройки, ничего не записано. Исправьте в %1 то, что должно измениться, или уберите его.</translation>
    </message>
    <message>
        <source>The settings in %1 are the same; nothing was written.</source>
        <translation>Настройки в %1 такие же; ничего не записано.</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Записано: %1</translation>
    </message>
    <message>
        <source>The server to try with: orva-simulator --port 8710</source>
        <translation>Учебный сервер: orva-simulator --port 8710</translation>
    </message>
    <message>
        <source>To look at the whole set-up: %1</source>
        <translation>Проверить всё целиком: %1</translation>
    </message>
    <message>
        <source>To deliver without a till: %1</source>
        <translation>Доставлять и без кассы: %1</translation>
    </message>
    <message>
        <source>Address of the loyalty server</source>
        <translation>Адрес сервера лояльности</translation>
    </message>
    <message>
        <source>Code of the shop</source>
        <translation>Код магазина</translation>
    </message>
    <message>
        <source>Code of the cash desk</source>
        <translation>Код кассы</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Пользователь</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Пароль</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Ключ</translation>
    </message>
    <message>
        <source>The answer to &quot;%1&quot; is missing; nothing was written.</source>
        <translation>Нет ответа на «%1»; ничего не записано.</translation>
    </message>
    <message>
        <source>%1 cannot be written (%2); check the folder and who you are.</source>
        <translation>%1 нельзя записать (%2); проверьте папку и от чьего имени вы работаете.</translation>
    </message>
    <message>
        <source>This address cannot be used: %1.</source>
        <translation>Этот адрес не годится: %1.</translation>
    </message>
    <message>
        <source>The server cannot be reached: %1. With --offline nothing is tried.</source>
        <translation>Сервер недоступен: %1. С ключом --offline ничего не проверяется.</translation>
    </message>
    <message>
        <source>%1 cannot be read as answers (%2).</source>
        <translation>%1 не годится как файл ответов (%2).</translation>
    </message>
    <message>
        <source>no regular file, or too long</source>
        <translation>не обычный файл или слишком длинный</translation>
    </message>
    <message>
        <source>There is no plug-in here that says which settings it needs; install it, or name its file with --plugin.</source>
        <translation>Здесь нет плагина, который сказал бы, какие настройки ему нужны; установите его или укажите его файл в --plugin.</translation>
    </message>
    <message>
        <source>User, password and key could not be tried here.</source>
        <translation>Пользователя, пароль и ключ здесь не удалось проверить.</translation>
    </message>
    <message>
        <source>Case: %1</source>
        <translation>Случай: %1</translation>
    </message>
    <message>
        <source>%1 (build %2)</source>
        <translation>%1 (сборка %2)</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Программа</translation>
    </message>
    <message>
        <source>The record was cut off.</source>
        <translation>Запись оборвана.</translation>
    </message>
    <message>
        <source>What happened when</source>
        <translation>Что и когда произошло</translation>
    </message>
    <message>
        <source>throws</source>
        <translation>исключение</translation>
    </message>
    <message>
        <source>message into the queue</source>
        <translation>сообщение в очередь</translation>
    </message>
    <message>
        <source>How long each call took, and the requests in it</source>
        <translation>Сколько длился каждый вызов и запросы в нём</translation>
    </message>
    <message>
        <source>Requests and answers</source>
        <translation>Запросы и ответы</translation>
    </message>
    <message>
        <source>Message %1 into the queue: %2</source>
        <translation>Сообщение %1 в очередь: %2</translation>
    </message>
    <message>
        <source>Confirmation</source>
        <translation>Подтверждение</translation>
    </message>
    <message>
        <source>Exchange %1: POST %2: %3</source>
        <translation>Обмен %1: POST %2: %3</translation>
    </message>
    <message>
        <source>Nothing was sent.</source>
        <translation>Ничего не отправлено.</translation>
    </message>
    <message>
        <source>What the queue did</source>
        <translation>Что сделала очередь</translation>
    </message>
    <message>
        <source>The queue has no message of this check, or not any more.</source>
        <translation>В очереди нет сообщения этого чека, или уже нет.</translation>
    </message>
    <message>
        <source>Message %1, stored %2, delivered %3, requests: %4.</source>
        <translation>Сообщение %1 сохранено %2, доставлено %3, запросов: %4.</translation>
    </message>
    <message>
        <source>Message %1, stored %2, not delivered, steps done: %3 of %4, requests: %5.</source>
        <translation>Сообщение %1 сохранено %2, не доставлено, шагов выполнено: %3 из %4, запросов: %5.</translation>
    </message>
    <message>
        <source>What a replay does differently</source>
        <translation>Что при повторе иначе</translation>
    </message>
    <message numerus="yes">
        <source>Nothing: %n calls, identical.</source>
        <translation>
            <numerusform>Ничего: %n вызов, всё совпало.</numerusform>
            <numerusform>Ничего: %n вызова, всё совпало.</numerusform>
            <numerusform>Ничего: %n вызовов, всё совпало.</numerusform>
        </translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Где</translation>
    </message>
    <message>
        <source>Recorded</source>
        <translation>Записано</translation>
    </message>
    <message>
        <source>Replayed</source>
        <translation>При повторе</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 мс</translation>
    </message>
    <message>
        <source>the whole check</source>
        <translation>весь чек</translation>
    </message>
    <message>
        <source>line %1, %2</source>
        <translation>строка %1, %2</translation>
    </message>
    <message>
        <source>The slip</source>
        <translation>Чек покупателя</translation>
    </message>
    <message>
        <source>Where its amounts come from</source>
        <translation>Откуда его суммы</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>Сумма</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Откуда</translation>
    </message>
    <message>
        <source>(empty)</source>
        <translation>(пусто)</translation>
    </message>
    <message>
        <source>A support archive, instead of this till</source>
        <translation>Архив для поддержки вместо этой кассы</translation>
    </message>
    <message>
        <source>A file that was exported, or a support archive</source>
        <translation>Выгруженный файл или архив для поддержки</translation>
    </message>
    <message>
        <source>The record&apos;s number, &quot;all&quot;, an exported file or a support archive</source>
        <translation>Номер записи, «all», выгруженный файл или архив для поддержки</translation>
    </message>
    <message>
        <source>Put into one file what helps to find a fault elsewhere</source>
        <translation>Собрать в один файл всё, что поможет найти неисправность в другом месте</translation>
    </message>
    <message>
        <source>Records by their numbers, 3,7 for example, or &quot;all&quot;, with their checks</source>
        <translation>Номера записей, например 3,7, или «all»; вместе с их чеками</translation>
    </message>
    <message>
        <source>A check by its identifier or number, or &quot;last&quot;, with its records; may be repeated</source>
        <translation>Чек по идентификатору или номеру, или «last»; вместе с его записями; можно повторить</translation>
    </message>
    <message>
        <source>Leave card numbers and names in it</source>
        <translation>Оставить в нём номера карт и имена</translation>
    </message>
    <message>
        <source>A tar archive for its owner only. Read it elsewhere with &quot;log list --from FILE&quot;,
&quot;log replay FILE&quot;, &quot;explain CHECK --from FILE&quot; and &quot;doctor --from FILE&quot;.</source>
        <translation>Архив tar, доступный только владельцу. В другом месте его читают «log list --from FILE»,
«log replay FILE», «explain CHECK --from FILE» и «doctor --from FILE».</translation>
    </message>
    <message>
        <source>Forget a customer: take a card and its names out of what is kept here</source>
        <translation>Забыть покупателя: убрать карту и имя из всего, что здесь хранится</translation>
    </message>
    <message>
        <source>The card&apos;s whole number</source>
        <translation>Полный номер карты</translation>
    </message>
    <message>
        <source>A further folder with exported records and support archives; may be
repeated</source>
        <translation>Ещё одна папка с выгруженными записями и архивами для поддержки;
можно повторить</translation>
    </message>
    <message>
        <source>Delivers first what is not delivered. Exit codes: 0 nothing tells of the customer any
more, 1 something is left, as the report says, 2 the number cannot be used.</source>
        <translation>Сначала доставляет недоставленное. Коды завершения: 0 — о покупателе больше ничего нет,
1 — что-то осталось, о чём сказано в отчёте, 2 — номер не годится.</translation>
    </message>
    <message>
        <source>%1 holds no report; have it made again.</source>
        <translation>В %1 нет отчёта; попросите сделать архив заново.</translation>
    </message>
    <message>
        <source>configuration without secrets</source>
        <translation>настройки без секретов</translation>
    </message>
    <message>
        <source>the doctor&apos;s report, for programs</source>
        <translation>отчёт доктора для программ</translation>
    </message>
    <message>
        <source>the doctor&apos;s report</source>
        <translation>отчёт доктора</translation>
    </message>
    <message>
        <source>list of the queue</source>
        <translation>список очереди</translation>
    </message>
    <message>
        <source>list of the checks</source>
        <translation>список чеков</translation>
    </message>
    <message>
        <source>records</source>
        <translation>записи</translation>
    </message>
    <message>
        <source>a check</source>
        <translation>чек</translation>
    </message>
    <message>
        <source>its confirmation</source>
        <translation>его подтверждение</translation>
    </message>
    <message>
        <source>Record %1 has no page (%2).</source>
        <translation>У записи %1 нет страницы (%2).</translation>
    </message>
    <message>
        <source>a record as a page</source>
        <translation>запись как страница</translation>
    </message>
    <message>
        <source>end of a log</source>
        <translation>конец журнала</translation>
    </message>
    <message>
        <source>%1 is there already; name a new file.</source>
        <translation>%1 уже есть; назовите новый файл.</translation>
    </message>
    <message>
        <source>Written: %1. It holds whole card numbers: hand it on with care.</source>
        <translation>Записан %1. В нём полные номера карт: передавайте его осторожно.</translation>
    </message>
    <message>
        <source>Written: %1.</source>
        <translation>Записан %1.</translation>
    </message>
    <message>
        <source>There is no database; lists and checks are left out.</source>
        <translation>Базы данных нет; списков и чеков не будет.</translation>
    </message>
    <message>
        <source>The lists are left out (%1).</source>
        <translation>Списков не будет (%1).</translation>
    </message>
    <message>
        <source>There is no record %1; look at &quot;log list&quot;.</source>
        <translation>Записи %1 нет; посмотрите «log list».</translation>
    </message>
    <message>
        <source>There are no checks to be had from this till.</source>
        <translation>С этой кассы чеков не получить.</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Файл</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Байты</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Что это</translation>
    </message>
    <message>
        <source>Card numbers and names are in it.</source>
        <translation>Номера карт и имена в нём есть.</translation>
    </message>
    <message>
        <source>Card numbers and names are masked.</source>
        <translation>Номера карт и имена скрыты.</translation>
    </message>
    <message>
        <source>The customer of the sale was erased, so the loyalty system is not told of the return.</source>
        <translation>Покупатель этой продажи забыт по его просьбе, поэтому система лояльности о возврате не узнает.</translation>
    </message>
    <message>
        <source>The server says: %1</source>
        <translation>Сервер сообщает: %1</translation>
    </message>
    <message>
        <source>%1; the server says: %2</source>
        <translation>%1; сервер сообщает: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no whole card number of at least %2 characters; shorter ones cannot be told from sums and codes.</source>
        <translation>«%1» — не полный номер карты хотя бы из %2 знаков; более короткий не отличить от сумм и кодов.</translation>
    </message>
    <message>
        <source>Check %1 is suspended; close or abandon it, then erase again.</source>
        <translation>Чек %1 отложен; закройте или отмените его и повторите.</translation>
    </message>
    <message>
        <source>Message %1 is not delivered and needs the card, with its check; see to it (&quot;queue list&quot;), then erase again.</source>
        <translation>Сообщение %1 не доставлено, и ему с его чеком карта ещё нужна; разберитесь с ним («queue list») и повторите.</translation>
    </message>
    <message>
        <source>%1 is in use, and keeps what was there before in its free space; end the other tills, then erase again.</source>
        <translation>%1 занята, и в её свободном месте осталось прежнее; остановите другие кассы и повторите.</translation>
    </message>
    <message>
        <source>Card %1 is taken out of:
</source>
        <translation>Карта %1 убрана:
</translation>
    </message>
    <message>
        <source>checks</source>
        <translation>чеки</translation>
    </message>
    <message>
        <source>messages of the queue</source>
        <translation>сообщения очереди</translation>
    </message>
    <message>
        <source>support archives</source>
        <translation>архивы для поддержки</translation>
    </message>
    <message>
        <source>pages of cases</source>
        <translation>страницы случаев</translation>
    </message>
    <message>
        <source>logs</source>
        <translation>журналы</translation>
    </message>
    <message>
        <source>Delivered before: %1
</source>
        <translation>Перед этим доставлено: %1
</translation>
    </message>
    <message>
        <source>Left: %1
</source>
        <translation>Осталось: %1
</translation>
    </message>
    <message>
        <source>%1 was not looked through (%2).</source>
        <translation>%1 не просмотрен (%2).</translation>
    </message>
    <message>
        <source>%1 holds the card and is no file of the till&apos;s own; look at it yourself.</source>
        <translation>В %1 есть номер карты, но это не файл кассы; посмотрите его сами.</translation>
    </message>
    <message>
        <source>%1 is no support archive that can be used (%2); have it made again.</source>
        <translation>%1 — не годный архив для поддержки (%2); попросите сделать его заново.</translation>
    </message>
    <message>
        <source>it has more than %1 bytes</source>
        <translation>в нём больше %1 байт</translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation>это не обычный файл</translation>
    </message>
    <message>
        <source>a till has not made it</source>
        <translation>его сделала не касса</translation>
    </message>
    <message>
        <source>a newer till has made it, and can read it</source>
        <translation>его сделала более новая касса; ею и читайте</translation>
    </message>
    <message>
        <source>%1 holds no check; have it made with --check or --records.</source>
        <translation>В %1 нет чеков; попросите сделать архив с --check или --records.</translation>
    </message>
    <message>
        <source>a number in it is damaged</source>
        <translation>повреждено число в нём</translation>
    </message>
    <message>
        <source>the name &quot;%1&quot; in it is none that a till gives</source>
        <translation>имя «%1» в нём дала не касса</translation>
    </message>
    <message>
        <source>&quot;%1&quot; in it is no plain file but a link, a folder or a device</source>
        <translation>«%1» в нём — не обычный файл, а ссылка, папка или устройство</translation>
    </message>
    <message>
        <source>it is damaged, or no archive</source>
        <translation>он повреждён, или это не архив</translation>
    </message>
    <message>
        <source>it is cut off</source>
        <translation>он обрезан</translation>
    </message>
    <message>
        <source>&quot;%1&quot; in it is there twice, or there is too much in it</source>
        <translation>«%1» в нём стоит дважды, или в нём слишком много всего</translation>
    </message>
    <message>
        <source>it is too large</source>
        <translation>он слишком велик</translation>
    </message>
    <message>
        <source>It would have more than %1 bytes, and nobody could read it; name fewer records.</source>
        <translation>В нём было бы больше %1 байт, и его никто бы не прочёл; назовите меньше записей.</translation>
    </message>
    <message>
        <source>Apply what is safe, and say so; a changed file is copied first</source>
        <translation>Исправить то, что безопасно, и сказать об этом; изменяемый файл сначала копируется</translation>
    </message>
    <message>
        <source>ask whoever runs the loyalty server for its https address, and write it as %1 under [%2] in %3</source>
        <translation>спросите у владельца сервера лояльности его адрес https и запишите его как %1 под [%2] в %3</translation>
    </message>
    <message>
        <source>name the file of the settings with --config</source>
        <translation>укажите файл настроек ключом --config</translation>
    </message>
    <message>
        <source>%1 belongs to %2, and %3 may not read it: make that account a member of the file&apos;s group</source>
        <translation>%1 принадлежит %2, и %3 не может его читать: включите эту учётную запись в группу файла</translation>
    </message>
    <message>
        <source>install the plug-in anew, %1 belongs to it</source>
        <translation>установите модуль заново: %1 — его часть</translation>
    </message>
    <message>
        <source>name regular files on a disk of this machine</source>
        <translation>укажите обычные файлы на диске этой машины</translation>
    </message>
    <message>
        <source>take out what is nested so deeply</source>
        <translation>уберите то, что вложено так глубоко</translation>
    </message>
    <message>
        <source>others may read what is secret: %1</source>
        <translation>другие могут прочитать секретное: %1</translation>
    </message>
    <message>
        <source>take the lines out, or write the names that are known</source>
        <translation>уберите эти строки или напишите известные имена</translation>
    </message>
    <message>
        <source>name the file with the certificates to trust as caFile under [http]; without one the system&apos;s are trusted</source>
        <translation>укажите файл с доверенными сертификатами как caFile под [http]; без него доверяют системным</translation>
    </message>
    <message>
        <source>not set: %1, which is installed</source>
        <translation>не задан: установленный %1</translation>
    </message>
    <message>
        <source>%1 belongs to %2, and %3 may not write it: make that account a member of the group that shares it</source>
        <translation>%1 принадлежит %2, и %3 не может в него писать: включите эту учётную запись в общую группу</translation>
    </message>
    <message>
        <source>name another file as database under [till]</source>
        <translation>укажите другой файл как database под [till]</translation>
    </message>
    <message>
        <source>others may open what holds credentials: %1</source>
        <translation>другие могут открыть файлы с паролями: %1</translation>
    </message>
    <message>
        <source>see to the disk of %1</source>
        <translation>проверьте диск, на котором %1</translation>
    </message>
    <message>
        <source>make room on the disk of %1</source>
        <translation>освободите место на диске, где %1</translation>
    </message>
    <message>
        <source>room for %1 files only</source>
        <translation>есть место только для %1 файлов</translation>
    </message>
    <message>
        <source>too large for a quick look</source>
        <translation>слишком велик для быстрой проверки</translation>
    </message>
    <message>
        <source>close all tills, keep %1 and what begins with its name, and put a copy in their place; checks that closed since are in the kept ones</source>
        <translation>закройте все кассы, сохраните %1 и файлы, чьи имена так начинаются, и положите на их место копию; закрытые с тех пор чеки — в сохранённых</translation>
    </message>
    <message>
        <source>install the newer version of the till</source>
        <translation>установите более новую версию кассы</translation>
    </message>
    <message>
        <source>put the secret into %1, on a line of its own</source>
        <translation>запишите секрет в %1, одной строкой</translation>
    </message>
    <message>
        <source>ask whoever runs the loyalty server for the right value of %1 under [%2] in %3</source>
        <translation>спросите у владельца сервера лояльности верное значение %1 под [%2] в %3</translation>
    </message>
    <message>
        <source>install a loyalty plug-in, or write its file as plugin under [till] in %1</source>
        <translation>установите модуль лояльности или запишите его файл как plugin под [till] в %1</translation>
    </message>
    <message>
        <source>%1, in the place of line %2:</source>
        <translation>%1, вместо строки %2:</translation>
    </message>
    <message>
        <source>%1, behind line %2:</source>
        <translation>%1, после строки %2:</translation>
    </message>
    <message>
        <source>%1, at its end:</source>
        <translation>%1, в конце:</translation>
    </message>
    <message>
        <source>by hand: %1</source>
        <translation>вручную: %1</translation>
    </message>
    <message>
        <source>mended:</source>
        <translation>исправлено:</translation>
    </message>
    <message>
        <source>not mended (%1):</source>
        <translation>не исправлено (%1):</translation>
    </message>
    <message>
        <source>as it was: %1</source>
        <translation>прежний файл: %1</translation>
    </message>
    <message>
        <source>install the package that holds %1</source>
        <translation>установите пакет, в котором есть %1</translation>
    </message>
    <message>
        <source>do what the plug-in asks for; %1 shows its log</source>
        <translation>сделайте то, чего требует модуль; его журнал показывает %1</translation>
    </message>
    <message>
        <source>switch the errors of the category orva on in Qt&apos;s logging rules</source>
        <translation>включите ошибки категории orva в правилах журнала Qt</translation>
    </message>
    <message>
        <source>write a log4qt.properties with an appender for the logger orva into the folder of the program</source>
        <translation>положите в папку программы log4qt.properties с приёмником для журнала orva</translation>
    </message>
    <message>
        <source>install the loyalty plug-in anew, made for this version of the till, and name its file as plugin under [till]</source>
        <translation>установите модуль лояльности заново, собранный для этой версии кассы, и укажите его файл как plugin под [till]</translation>
    </message>
    <message>
        <source>look at it with %1, ask whoever runs the loyalty server, then &quot;queue retry %2&quot; or, if the server has it, &quot;queue settle %2&quot;</source>
        <translation>посмотрите его командой %1, спросите у владельца сервера лояльности, затем «queue retry %2» или, если сервер его принял, «queue settle %2»</translation>
    </message>
    <message>
        <source>%1 suspended, the oldest (%2) since %3</source>
        <translation>отложено %1, самый давний (%2) с %3</translation>
    </message>
    <message>
        <source>take it up with &quot;restore %1&quot; in %2, then close it or abandon it</source>
        <translation>возьмите его командой «restore %1» в %2, затем закройте или отмените</translation>
    </message>
    <message>
        <source>a service delivers what tills leave</source>
        <translation>служба доставляет то, что оставили кассы</translation>
    </message>
    <message>
        <source>nobody delivers while no till is open</source>
        <translation>пока ни одна касса не открыта, никто не доставляет</translation>
    </message>
    <message>
        <source>the store has not said where %1 are, the oldest since %2</source>
        <translation>хранилище не сказало, где %1, старейший с %2</translation>
    </message>
    <message>
        <source>the store has not said where %1 are</source>
        <translation>хранилище не сказало, где %1</translation>
    </message>
    <message>
        <source>see that the store answers, then have it asked with %1</source>
        <translation>проверьте, что хранилище отвечает, и спросите его командой %1</translation>
    </message>
    <message>
        <source>Suspended checks</source>
        <translation>Отложенные чеки</translation>
    </message>
    <message>
        <source>not read in time</source>
        <translation>не прочитано вовремя</translation>
    </message>
    <message>
        <source>Delivery without a till</source>
        <translation>Доставка без кассы</translation>
    </message>
    <message>
        <source>%1 is no folder</source>
        <translation>%1 — не папка</translation>
    </message>
    <message>
        <source>name another folder under [recording]</source>
        <translation>укажите другую папку под [recording]</translation>
    </message>
    <message>
        <source>%1 belongs to %2, the till runs as %3: give it a folder of its own</source>
        <translation>%1 принадлежит %2, а касса работает от имени %3: дайте ей свою папку</translation>
    </message>
    <message>
        <source>Records</source>
        <translation>Записи</translation>
    </message>
    <message>
        <source>nothing is recorded</source>
        <translation>ничего не записывается</translation>
    </message>
    <message>
        <source>see to the address in the settings, to the network and to its name server</source>
        <translation>проверьте адрес в настройках, сеть и её сервер имён</translation>
    </message>
    <message>
        <source>ask whoever runs the network for the proxy&apos;s address, and write it as proxy under [http]</source>
        <translation>спросите у владельца сети адрес прокси и запишите его как proxy под [http]</translation>
    </message>
    <message>
        <source>see to the address in the settings, to the network, and whether the server runs</source>
        <translation>проверьте адрес в настройках, сеть и работает ли сервер</translation>
    </message>
    <message>
        <source>ask whoever runs the loyalty server for the certificate of its authority, and name its file as caFile under [http]</source>
        <translation>спросите у владельца сервера лояльности сертификат его удостоверяющего центра и укажите его файл как caFile под [http]</translation>
    </message>
    <message>
        <source>tell whoever runs the loyalty server: its certificate has to be renewed or put right</source>
        <translation>сообщите владельцу сервера лояльности: его сертификат нужно продлить или исправить</translation>
    </message>
    <message>
        <source>ask whoever runs the loyalty server; %1 shows what is said on the way</source>
        <translation>спросите у владельца сервера лояльности; что было сказано, показывает %1</translation>
    </message>
    <message>
        <source>ask whoever runs the loyalty server for user, password and key, and write them into %1 or the files that it names</source>
        <translation>спросите у владельца сервера лояльности имя, пароль и ключ и запишите их в %1 или в файлы, которые там названы</translation>
    </message>
    <message>
        <source>ask whoever runs the network for the proxy&apos;s user and password, and write them into proxy under [http]</source>
        <translation>спросите у владельца сети имя и пароль для прокси и запишите их в proxy под [http]</translation>
    </message>
    <message>
        <source>name a card that the server knows with --card, or ask whoever runs it</source>
        <translation>укажите ключом --card карту, которую знает сервер, или спросите его владельца</translation>
    </message>
    <message>
        <source>set this machine&apos;s clock, and have it follow a time server</source>
        <translation>поставьте часы этой машины и включите их сверку с сервером времени</translation>
    </message>
    <message>
        <source>write %1 under [%2] in %3</source>
        <translation>запишите %1 под [%2] в %3</translation>
    </message>
    <message>
        <source>write the value of %1 under [%2] in %3 in quotes</source>
        <translation>возьмите значение %1 под [%2] в %3 в кавычки</translation>
    </message>
    <message>
        <source>take %1 out of %2</source>
        <translation>уберите %1 из %2</translation>
    </message>
    <message>
        <source>put line %1 of %2 right, or take it out: texts stand in quotes, a key is there once</source>
        <translation>исправьте или уберите строку %1 в %2: тексты стоят в кавычках, каждый ключ — один раз</translation>
    </message>
    <message>
        <source>%1, line %2, column %3: %4; the line: %5</source>
        <translation>%1, строка %2, столбец %3: %4; сама строка: %5</translation>
    </message>
    <message>
        <source>an amount such as 12.50</source>
        <translation>сумма вида 12.50</translation>
    </message>
    <message>
        <source>a document that fits %1</source>
        <translation>документ по схеме %1</translation>
    </message>
    <message>
        <source>bytes that are no UTF-8</source>
        <translation>байты, которые не UTF-8</translation>
    </message>
    <message>
        <source>no declarations in a document type</source>
        <translation>тип документа без объявлений</translation>
    </message>
    <message>
        <source>the till sells without the loyalty system: %1</source>
        <translation>касса продаёт без системы лояльности: %1</translation>
    </message>
    <message>
        <source>the server lets this card spend no points; give it some</source>
        <translation>сервер не даёт списать с этой карты баллы; начислите их</translation>
    </message>
    <message>
        <source>the server does not take a check: %1 to %2</source>
        <translation>сервер не принимает чек: %1 на %2</translation>
    </message>
    <message>
        <source>the till returns without the loyalty system</source>
        <translation>касса возвращает без системы лояльности</translation>
    </message>
    <message>
        <source>the server does not take a return: %1 to %2</source>
        <translation>сервер не принимает возврат: %1 на %2</translation>
    </message>
    <message>
        <source>the plug-in asks the server nothing</source>
        <translation>плагин ни о чём не спрашивает сервер</translation>
    </message>
    <message>
        <source>the server does not answer a pre-check: %1</source>
        <translation>сервер не отвечает на предварительный запрос: %1</translation>
    </message>
    <message>
        <source>the server's answer is no XML: %1</source>
        <translation>ответ сервера — не XML: %1</translation>
    </message>
    <message>
        <source>the server does not say what the card holds</source>
        <translation>сервер не говорит, сколько на карте</translation>
    </message>
    <message>
        <source>no amount</source>
        <translation>нет суммы</translation>
    </message>
    <message>
        <source>%1, after %2 before</source>
        <translation>%1, до этого было %2</translation>
    </message>
    <message>
        <source>the queue has delivered the check</source>
        <translation>очередь доставила чек</translation>
    </message>
    <message>
        <source>it has not</source>
        <translation>не доставила</translation>
    </message>
    <message>
        <source>the server does not answer a changed check</source>
        <translation>сервер не отвечает на изменённый чек</translation>
    </message>
    <message>
        <source>an answer</source>
        <translation>ответ</translation>
    </message>
    <message>
        <source>an answer of this address itself</source>
        <translation>ответ самого этого адреса</translation>
    </message>
    <message>
        <source>a whole answer</source>
        <translation>целый ответ</translation>
    </message>
    <message>
        <source>not compressed</source>
        <translation>без сжатия</translation>
    </message>
    <message>
        <source>the address is not one of https</source>
        <translation>адрес не https</translation>
    </message>
    <message>
        <source>a trusted connection</source>
        <translation>соединение, которому можно доверять</translation>
    </message>
    <message>
        <source>a connection that is closed without a word</source>
        <translation>соединение закрыто без предупреждения</translation>
    </message>
    <message>
        <source>The plug-in does not say where its server is; look at the configuration with &quot;orva-till doctor&quot;.</source>
        <translation>Плагин не говорит, где его сервер; проверьте настройки командой «orva-till doctor».</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>не больше %1</translation>
    </message>
    <message>
        <source>the server takes no payment try</source>
        <translation>сервер не принимает попытку оплаты</translation>
    </message>
    <message>
        <source>the server does not refuse a wrong payment</source>
        <translation>сервер не отказывает при неверной оплате</translation>
    </message>
    <message>
        <source>the server does not refuse a wrong sum</source>
        <translation>сервер не отказывает при неверной сумме</translation>
    </message>
    <message>
        <source>the server refuses nothing</source>
        <translation>сервер ни в чём не отказывает</translation>
    </message>
    <message>
        <source>a sentence of plain text</source>
        <translation>предложение простым текстом</translation>
    </message>
    <message>
        <source>no whole card number</source>
        <translation>без полного номера карты</translation>
    </message>
    <message>
        <source>no credentials</source>
        <translation>без учётных данных</translation>
    </message>
    <message>
        <source>the server holds the check's number against its answer</source>
        <translation>сервер сверяет номер чека со своим ответом</translation>
    </message>
    <message>
        <source>must</source>
        <translation>обязательно</translation>
    </message>
    <message>
        <source>should</source>
        <translation>желательно</translation>
    </message>
    <message>
        <source>element</source>
        <translation>элемент</translation>
    </message>
    <message>
        <source>expected</source>
        <translation>ожидалось</translation>
    </message>
    <message>
        <source>got</source>
        <translation>получено</translation>
    </message>
    <message>
        <source>asked at</source>
        <translation>адрес запроса</translation>
    </message>
    <message>
        <source>request</source>
        <translation>запрос</translation>
    </message>
    <message>
        <source>BROKEN %1 (%2)</source>
        <translation>НАРУШЕНО %1 (%2)</translation>
    </message>
    <message>
        <source>the protocol says</source>
        <translation>в протоколе сказано</translation>
    </message>
    <message>
        <source>held: %1</source>
        <translation>соблюдено: %1</translation>
    </message>
    <message>
        <source>not tried: %1 (%2)</source>
        <translation>не проверено: %1 (%2)</translation>
    </message>
    <message>
        <source>Pre-checks were answered within %1 ms in the middle, %2 ms for 95 of 100, %3 ms at most:</source>
        <translation>Ответы на предварительные запросы: половина за %1 мс, 95 из 100 за %2 мс, самый долгий %3 мс:</translation>
    </message>
    <message>
        <source>more</source>
        <translation>больше</translation>
    </message>
    <message>
        <source>Requirements: %1 held, %2 broken, %3 not tried; cases: %4 held, %5 broken, %6 not tried.</source>
        <translation>Требования: соблюдено %1, нарушено %2, не проверено %3; случаи: соблюдено %4, нарушено %5, не проверено %6.</translation>
    </message>
    <message>
        <source>Left behind: checks that are returned whole, and pre-checks and payment tries that were never confirmed.</source>
        <translation>Остались: чеки, возвращённые целиком, и неподтверждённые предварительные запросы и попытки оплаты.</translation>
    </message>
    <message>
        <source>Left behind in the books: %1</source>
        <translation>Остались в учёте: %1</translation>
    </message>
    <message>
        <source>Nothing that a till relies on is broken.</source>
        <translation>Не нарушено ничего, на что рассчитывает касса.</translation>
    </message>
    <message>
        <source>Tills cannot rely on this server.</source>
        <translation>Кассы не могут рассчитывать на этот сервер.</translation>
    </message>
    <message>
        <source>a run cannot cut the server's power</source>
        <translation>проверка не может отключить серверу питание</translation>
    </message>
    <message>
        <source>a run does not last for 90 days</source>
        <translation>проверка не длится 90 дней</translation>
    </message>
    <message>
        <source>a run cannot bring the server into trouble</source>
        <translation>проверка не может вызвать на сервере сбой</translation>
    </message>
    <message>
        <source>the server does not try two returns of one sale</source>
        <translation>сервер не принимает попытки двух возвратов одной продажи</translation>
    </message>
    <message>
        <source>the server does not book a return</source>
        <translation>сервер не проводит возврат</translation>
    </message>
    <message>
        <source>the server does not answer a return</source>
        <translation>сервер не отвечает на возврат</translation>
    </message>
    <message>
        <source>There is no case or requirement &quot;%1&quot;; --list has their names.</source>
        <translation>Нет случая или требования «%1»; имена показывает --list.</translation>
    </message>
    <message>
        <source>There is no case or requirement &quot;%1&quot;; did you mean &quot;%2&quot;?</source>
        <translation>Нет случая или требования «%1»; может быть, «%2»?</translation>
    </message>
    <message>
        <source>the server was never busy</source>
        <translation>сервер ни разу не был занят</translation>
    </message>
    <message>
        <source>seconds, or a date</source>
        <translation>секунды или дата</translation>
    </message>
    <message>
        <source>%1 is not below the address that is marked as meant for testing; nothing was sent there.</source>
        <translation>%1 не относится к адресу, отмеченному как испытательный; туда ничего не послано.</translation>
    </message>
    <message>
        <source>%1 names no %2; write it into the table [verify].</source>
        <translation>В %1 нет %2; впишите в таблицу [verify].</translation>
    </message>
    <message>
        <source>%1 does not mark %2 as meant for testing; if it is, write it as testServer into the table [verify].</source>
        <translation>В %1 адрес %2 не отмечен как испытательный; если он такой, впишите его ключом testServer в таблицу [verify].</translation>
    </message>
    <message>
        <source>%1 has another server in %2 of the table [%3] than the one for testing; write the same address into both.</source>
        <translation>В %1 ключ %2 таблицы [%3] называет другой сервер, не испытательный; впишите в оба места один адрес.</translation>
    </message>
    <message>
        <source>%1: the table [verify] needs two different cards and at least one goods code.</source>
        <translation>%1: в таблице [verify] нужны две разные карты и хотя бы один код товара.</translation>
    </message>
    <message>
        <source>Trying the server</source>
        <translation>Проверка сервера</translation>
    </message>
    <message>
        <source>%1 cannot be written (%2); name a new file.</source>
        <translation>%1 нельзя записать (%2); назовите новый файл.</translation>
    </message>
    <message>
        <source>no emptyCard is named in the table [verify]</source>
        <translation>в таблице [verify] не назван emptyCard</translation>
    </message>
    <message>
        <source>the goods earn no points</source>
        <translation>за товары не начисляются баллы</translation>
    </message>
    <message>
        <source>Try whether a loyalty server for testing does what tills rely on</source>
        <translation>Проверить, делает ли испытательный сервер лояльности то, на что рассчитывают кассы</translation>
    </message>
    <message>
        <source>The requirements with their cases; try nothing</source>
        <translation>Требования и их случаи; ничего не проверять</translation>
    </message>
    <message>
        <source>The server's address, which is testServer in [verify]</source>
        <translation>Адрес сервера, он же testServer в [verify]</translation>
    </message>
    <message>
        <source>Cases or requirements; otherwise all</source>
        <translation>Случаи или требования; иначе все</translation>
    </message>
    <message>
        <source>What a server should do, it must do</source>
        <translation>То, что серверу следует делать, обязательно</translation>
    </message>
    <message>
        <source>As the Test Anything Protocol</source>
        <translation>В виде Test Anything Protocol</translation>
    </message>
    <message>
        <source>A new file for the results as JUnit's XML, beside what is printed</source>
        <translation>Новый файл для результатов в виде JUnit XML, кроме того, что печатается</translation>
    </message>
    <message>
        <source>In an order by chance</source>
        <translation>В случайном порядке</translation>
    </message>
    <message>
        <source>What the order follows from, above 0</source>
        <translation>Из чего следует порядок, больше 0</translation>
    </message>
    <message>
        <source>Sells and returns with the cards that [verify] names. Exit codes: 0 nothing is broken, 1
something is, 2 the address is not marked as meant for testing.</source>
        <translation>Продаёт и возвращает с картами из [verify]. Коды завершения: 0 — ничего не нарушено,
1 — нарушено, 2 — адрес не отмечен как испытательный.</translation>
    </message>
    <message>
        <source>see that the database server runs and can be reached from here; until then the till sells and keeps its checks</source>
        <translation>проверьте, что сервер базы данных работает и доступен отсюда; до тех пор касса продаёт и хранит свои чеки</translation>
    </message>
    <message>
        <source>does not answer in time</source>
        <translation>не отвечает вовремя</translation>
    </message>
    <message>
        <source>put right what is said, or take [store] out of the configuration; until then the till sells and keeps its checks</source>
        <translation>исправьте то, о чём сказано, или уберите [store] из настроек; до тех пор касса продаёт и хранит свои чеки</translation>
    </message>
    <message>
        <source>takes checks</source>
        <translation>принимает чеки</translation>
    </message>
    <message>
        <source>Store of the shop</source>
        <translation>Хранилище магазина</translation>
    </message>
    <message>
        <source>Whether the store has the suspended check %1 is not known (%2); it is asked again.</source>
        <translation>Неизвестно, есть ли отложенный чек %1 в хранилище (%2); касса спросит ещё раз.</translation>
    </message>
    <message>
        <source>Check %1 is suspended at this till alone (%2).</source>
        <translation>Чек %1 отложен только на этой кассе (%2).</translation>
    </message>
    <message>
        <source>The suspended check %1 was released to another till and is given up here.</source>
        <translation>Отложенный чек %1 отдан другой кассе и здесь больше не ведётся.</translation>
    </message>
    <message>
        <source>Check %1 is not restored (%2); when that is put right, restore it again.</source>
        <translation>Чек %1 не возвращён (%2); когда это исправлено, верните его ещё раз.</translation>
    </message>
    <message>
        <source>No store is configured to leave the check in; suspend it here, or name one in [store].</source>
        <translation>Хранилище, в котором оставить чек, не настроено; отложите его здесь или укажите хранилище в [store].</translation>
    </message>
    <message>
        <source>keep the check for later, with --store for any till of the shop</source>
        <translation>отложить чек, с --store — для любой кассы магазина</translation>
    </message>
    <message>
        <source>left in the store</source>
        <translation>оставлен в хранилище</translation>
    </message>
    <message>
        <source>Of all tills of the shop, out of the store</source>
        <translation>Всех касс магазина, из хранилища</translation>
    </message>
    <message>
        <source>%1 names no store; add a table [store] to it.</source>
        <translation>В %1 не указано хранилище; добавьте таблицу [store].</translation>
    </message>
    <message>
        <source>Check %1 is till %2&apos;s: it is explained from what it shows itself; what was recorded with it is there.</source>
        <translation>Чек %1 — кассы %2: он объяснён по тому, что в нём самом; что записано с ним, лежит там.</translation>
    </message>
    <message>
        <source>Check %1 is till %2&apos;s, and what the server has answered is recorded there: explain it there. (%3)</source>
        <translation>Чек %1 — кассы %2, и ответ сервера записан там: объясните его там. (%3)</translation>
    </message>
    <message>
        <source>checks in the store</source>
        <translation>чеки в хранилище</translation>
    </message>
    <message>
        <source>Check %1 is suspended in the store; take it up and close or abandon it, then erase again.</source>
        <translation>Чек %1 отложен в хранилище; заберите его и закройте или отмените, затем сотрите ещё раз.</translation>
    </message>
    <message>
        <source>The store was not looked through (%1); erase again.</source>
        <translation>Хранилище не просмотрено (%1); сотрите ещё раз.</translation>
    </message>
    <message>
        <source>Check %1 of till %2 is not delivered by the store yet; erase again when it is.</source>
        <translation>Чек %1 кассы %2 ещё не доставлен хранилищем; сотрите ещё раз, когда он будет доставлен.</translation>
    </message>
    <message>
        <source>Till</source>
        <translation>Касса</translation>
    </message>
    <message>
        <source>delivered</source>
        <translation>доставлено</translation>
    </message>
    <message>
        <source>Metrics: %1</source>
        <translation>Метрики: %1</translation>
    </message>
    <message>
        <source>Write how the till stands into a file for a monitoring</source>
        <translation>Записать состояние кассы в файл для мониторинга</translation>
    </message>
    <message>
        <source>The file; one of that name is replaced</source>
        <translation>Файл; файл с таким именем заменяется</translation>
    </message>
    <message>
        <source>What this return takes back is being given free; abandon it and open it again.</source>
        <translation>Товар этого возврата освобождается; откажитесь от него и откройте возврат снова.</translation>
    </message>
    <message>
        <source>What this return takes back was given free meanwhile; abandon it and open it again.</source>
        <translation>Товар этого возврата тем временем освобождён; откажитесь от него и откройте возврат снова.</translation>
    </message>
    <message>
        <source>%1 (till %2)</source>
        <translation>%1 (касса %2)</translation>
    </message>
    <message>
        <source>Several tills have a sale with the number %1; name one by its identifier: %2.</source>
        <translation>Продажа с номером %1 есть на нескольких кассах; назовите её по идентификатору: %2.</translation>
    </message>
    <message>
        <source>This till has no closed sale &quot;%1&quot;, and the store cannot be asked for those of other tills (%2); try again, or return it where it was sold.</source>
        <translation>На этой кассе нет закрытой продажи «%1», а спросить хранилище о продажах других касс не удалось (%2); повторите или верните товар там, где он продан.</translation>
    </message>
    <message>
        <source>The store cannot be asked what other tills took back of the sale (%1); the return goes on with what this till knows.</source>
        <translation>Не удалось спросить хранилище, что вернули по этой продаже другие кассы (%1); возврат идёт по тому, что знает эта касса.</translation>
    </message>
    <message>
        <source>The check is not closed: the store has not confirmed the return of another till&apos;s sale (%1); close it again, or abandon it.</source>
        <translation>Чек не закрыт: хранилище не подтвердило возврат продажи другой кассы (%1); закройте его ещё раз или откажитесь от него.</translation>
    </message>
    <message>
        <source>The store has not confirmed the return (%1); it is looked at again when the check is handed over.</source>
        <translation>Хранилище не подтвердило возврат (%1); он будет проверен, когда чек будет передан.</translation>
    </message>
    <message>
        <source>not set: they are not written</source>
        <translation>не задано: не записываются</translation>
    </message>
    <message>
        <source>the store has them</source>
        <translation>они в хранилище</translation>
    </message>
    <message>
        <source>on their way to the store: %1</source>
        <translation>на пути в хранилище: %1</translation>
    </message>
    <message>
        <source>the store refuses %1, check %2 for one (%3)</source>
        <translation>хранилище не принимает: %1, например чек %2 (%3)</translation>
    </message>
    <message>
        <source>compare it with what the sentence names; where goods are only reserved, &quot;orva-store returns release&quot; gives them free, and the check is handed over within the hour; else it stays at this till alone</source>
        <translation>сверьте его с тем, что названо; если товар только отложен, «orva-store returns release» освободит его, и чек будет передан в течение часа; иначе он останется только на этой кассе</translation>
    </message>
    <message>
        <source>Checks without a message on their way to the store: %1.</source>
        <translation>Чеков без сообщения на пути в хранилище: %1.</translation>
    </message>
    <message>
        <source>Checks without a message</source>
        <translation>Чеки без сообщения</translation>
    </message>
    <message>
        <source>Check %1 is on its way to the store; see that the store answers, then erase again.</source>
        <translation>Чек %1 на пути в хранилище; проследите, чтобы хранилище ответило, затем удалите снова.</translation>
    </message>
</context>
<context>
    <name>Store</name>
    <message>
        <source>Deliver what stands in the store until stopped</source>
        <translation>Доставлять то, что лежит в хранилище, до остановки</translation>
    </message>
    <message>
        <source>Name of this worker (default: machine and process)</source>
        <translation>Имя этого доставщика (по умолчанию: машина и процесс)</translation>
    </message>
    <message>
        <source>File with the header that is sent instead of the tills&apos; own</source>
        <translation>Файл с заголовком, который отправляется вместо данных касс</translation>
    </message>
    <message>
        <source>Seconds after which a worker that is silent loses its lane</source>
        <translation>Через сколько секунд замолчавший доставщик теряет свою дорожку</translation>
    </message>
    <message>
        <source>Seconds that the loyalty server is waited for</source>
        <translation>Сколько секунд ждать сервер лояльности</translation>
    </message>
    <message>
        <source>End when nothing is due</source>
        <translation>Закончить, когда отправлять нечего</translation>
    </message>
    <message>
        <source>Make the tables, or bring them up to date</source>
        <translation>Создать таблицы или обновить их</translation>
    </message>
    <message>
        <source>Let a login of the database be a shop&apos;s till</source>
        <translation>Разрешить имени базы быть кассой магазина</translation>
    </message>
    <message>
        <source>The login</source>
        <translation>Имя для входа</translation>
    </message>
    <message>
        <source>Code of the shop</source>
        <translation>Код магазина</translation>
    </message>
    <message>
        <source>Look at the store and say what is wrong with it</source>
        <translation>Осмотреть хранилище и сказать, что в нём не так</translation>
    </message>
    <message>
        <source>The messages that are not delivered yet</source>
        <translation>Ещё не доставленные сообщения</translation>
    </message>
    <message>
        <source>List them, the oldest first</source>
        <translation>Перечислить их, начиная со старых</translation>
    </message>
    <message>
        <source>The message&apos;s number</source>
        <translation>Номер сообщения</translation>
    </message>
    <message>
        <source>Show a message without its secrets</source>
        <translation>Показать сообщение без секретов</translation>
    </message>
    <message>
        <source>Make a message due now</source>
        <translation>Отправить сообщение сейчас</translation>
    </message>
    <message>
        <source>Leave a message out until retry</source>
        <translation>Отложить сообщение до retry</translation>
    </message>
    <message>
        <source>Take a parked message for delivered</source>
        <translation>Считать отложенное сообщение доставленным</translation>
    </message>
    <message>
        <source>Replace the credentials of a queue</source>
        <translation>Заменить учётные данные очереди</translation>
    </message>
    <message>
        <source>Name of the queue</source>
        <translation>Имя очереди</translation>
    </message>
    <message>
        <source>File whose only line is the header Authorization</source>
        <translation>Файл, единственная строка которого — заголовок Authorization</translation>
    </message>
    <message>
        <source>Of this shop only</source>
        <translation>Только этого магазина</translation>
    </message>
    <message>
        <source>The books that tills share, on PostgreSQL.
Exit codes: 0 done, 1 failed, 2 wrong command line or settings.</source>
        <translation>Общие книги касс на PostgreSQL.
Коды возврата: 0 сделано, 1 не удалось, 2 неверная командная строка или настройки.</translation>
    </message>
    <message>
        <source>Print the version and exit</source>
        <translation>Показать версию и выйти</translation>
    </message>
    <message>
        <source>File with the settings (default: orva.toml here, then /etc/orva/orva.toml)</source>
        <translation>Файл настроек (по умолчанию orva.toml здесь, затем /etc/orva/orva.toml)</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 не читается: %2</translation>
    </message>
    <message>
        <source>There is no undelivered message %1; look at &quot;queue list&quot;.</source>
        <translation>Недоставленного сообщения %1 нет; посмотрите «queue list».</translation>
    </message>
    <message>
        <source>Message %1 is due now.</source>
        <translation>Сообщение %1 назначено к отправке.</translation>
    </message>
    <message>
        <source>Message %1 is parked.</source>
        <translation>Сообщение %1 снято с отправки.</translation>
    </message>
    <message>
        <source>Message %1 counts as delivered.</source>
        <translation>Сообщение %1 считается доставленным.</translation>
    </message>
    <message>
        <source>There is no parked message %1; look at &quot;queue list&quot;. Only what is parked can be settled.</source>
        <translation>Снятого с отправки сообщения %1 нет; посмотрите «queue list». Закрыть можно только снятое.</translation>
    </message>
    <message>
        <source>Messages that go out with the new credentials: %1.</source>
        <translation>С новыми учётными данными пойдут сообщений: %1.</translation>
    </message>
    <message>
        <source>Nothing is to be delivered.</source>
        <translation>Доставлять нечего.</translation>
    </message>
    <message>
        <source>These are the oldest; there may be more.</source>
        <translation>Это самые старые; могут быть и другие.</translation>
    </message>
    <message>
        <source>A primary answers and takes writes.</source>
        <translation>Основной сервер отвечает и принимает запись.</translation>
    </message>
    <message>
        <source>The tables are of version %1.</source>
        <translation>Таблицы версии %1.</translation>
    </message>
    <message>
        <source>What is committed is on the disk.</source>
        <translation>Записанное лежит на диске.</translation>
    </message>
    <message>
        <source>A power cut can lose what is committed: set fsync and full_page_writes to on.</source>
        <translation>Отключение питания может потерять записанное: включите fsync и full_page_writes.</translation>
    </message>
    <message>
        <source>A standby confirms each commit.</source>
        <translation>Резервный сервер подтверждает каждую запись.</translation>
    </message>
    <message>
        <source>No standby confirms commits (synchronous_standby_names is empty): the loss of the primary&apos;s disk loses checks.</source>
        <translation>Резервный сервер записи не подтверждает (synchronous_standby_names пусто): с диском основного сервера пропадут чеки.</translation>
    </message>
    <message>
        <source>The tables of the days to come are made.</source>
        <translation>Таблицы следующих дней созданы.</translation>
    </message>
    <message>
        <source>Tomorrow&apos;s tables are missing: start a worker, which makes them.</source>
        <translation>Нет таблиц на завтра: запустите доставщика, он их создаст.</translation>
    </message>
    <message>
        <source>Messages that wait: %1.</source>
        <translation>Ожидают отправки: %1.</translation>
    </message>
    <message>
        <source>No message is parked.</source>
        <translation>Отложенных сообщений нет.</translation>
    </message>
    <message>
        <source>Messages that are parked: %1; look at &quot;queue list&quot;.</source>
        <translation>Отложено сообщений: %1; посмотрите «queue list».</translation>
    </message>
    <message>
        <source>The loyalty server is away, or does not accept what is sent; look at &quot;queue list&quot;.</source>
        <translation>Сервер лояльности недоступен или не принимает отправленное; посмотрите «queue list».</translation>
    </message>
    <message>
        <source>Lanes with work that no worker can find: %1; keep the database and ask for help.</source>
        <translation>Дорожки с сообщениями, которых не найдёт ни один доставщик: %1; сохраните базу и обратитесь за помощью.</translation>
    </message>
    <message>
        <source>No old transaction keeps the tables from being cleaned.</source>
        <translation>Старых транзакций, мешающих уборке таблиц, нет.</translation>
    </message>
    <message>
        <source>A transaction has been open for %1 minutes: end it, the tables grow.</source>
        <translation>Транзакция открыта %1 мин: завершите её, таблицы растут.</translation>
    </message>
    <message>
        <source>%1 names no store: add database = &quot;host=... dbname=... user=...&quot; to its table [store]</source>
        <translation>В %1 не указано хранилище: добавьте database = &quot;host=... dbname=... user=...&quot; в таблицу [store]</translation>
    </message>
    <message>
        <source>Working as %1 until stopped.</source>
        <translation>Работаю под именем %1 до остановки.</translation>
    </message>
    <message>
        <source>Delivered: %1, parked: %2, requests: %3.</source>
        <translation>Доставлено: %1, отложено: %2, запросов: %3.</translation>
    </message>
    <message>
        <source>The tables are of version %1 already.</source>
        <translation>Таблицы уже версии %1.</translation>
    </message>
    <message>
        <source>The tables are of version %1 now.</source>
        <translation>Теперь таблицы версии %1.</translation>
    </message>
    <message>
        <source>%1 is a till of shop %2.</source>
        <translation>%1 — касса магазина %2.</translation>
    </message>
    <message>
        <source>Show how the store stands</source>
        <translation>Показать, как дела в хранилище</translation>
    </message>
    <message>
        <source>As JSON</source>
        <translation>В виде JSON</translation>
    </message>
    <message>
        <source>Every two seconds, until stopped</source>
        <translation>Каждые две секунды, до остановки</translation>
    </message>
    <message>
        <source>Show figures to a monitoring on this machine until stopped</source>
        <translation>Показывать числа мониторингу на этой машине до остановки</translation>
    </message>
    <message>
        <source>Address of this machine alone, and port</source>
        <translation>Адрес только этой машины и порт</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 мин</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 ч</translation>
    </message>
    <message>
        <source>%1 d</source>
        <translation>%1 д</translation>
    </message>
    <message>
        <source>Lanes with work: %1.</source>
        <translation>Дорожек с работой: %1.</translation>
    </message>
    <message>
        <source>Messages that wait: about %1.</source>
        <translation>Ожидают сообщений: около %1.</translation>
    </message>
    <message>
        <source>The oldest has waited for %1.</source>
        <translation>Самое старое ждёт %1.</translation>
    </message>
    <message>
        <source>Parked: %1, behind these: %2.</source>
        <translation>Отложено: %1, за ними: %2.</translation>
    </message>
    <message>
        <source>Within the last %1: attempts %2, deliveries %3 (%4 a second).</source>
        <translation>За последние %1: попыток %2, доставок %3 (%4 в секунду).</translation>
    </message>
    <message>
        <source>Failed because %1: %2.</source>
        <translation>Не удалось, потому что %1: %2.</translation>
    </message>
    <message>
        <source>the loyalty server was away</source>
        <translation>сервер лояльности был недоступен</translation>
    </message>
    <message>
        <source>the loyalty server had an error</source>
        <translation>на сервере лояльности была ошибка</translation>
    </message>
    <message>
        <source>the credentials were refused</source>
        <translation>учётные данные отвергнуты</translation>
    </message>
    <message>
        <source>the address was wrong</source>
        <translation>адрес был неверен</translation>
    </message>
    <message>
        <source>the message was refused</source>
        <translation>сообщение отвергнуто</translation>
    </message>
    <message>
        <source>the loyalty server knew the message</source>
        <translation>сервер лояльности уже знал сообщение</translation>
    </message>
    <message>
        <source>Tills that have handed over within %1 days: %2.</source>
        <translation>Касс, передававших за %1 дней: %2.</translation>
    </message>
    <message>
        <source>Shop</source>
        <translation>Магазин</translation>
    </message>
    <message>
        <source>Till</source>
        <translation>Касса</translation>
    </message>
    <message>
        <source>Last hand-over</source>
        <translation>Последняя передача</translation>
    </message>
    <message>
        <source>Ago</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>These have been silent for the longest time; --json has all.</source>
        <translation>Эти молчат дольше всех; все — в --json.</translation>
    </message>
    <message>
        <source>%1 is not an address of this machine alone, such as 127.0.0.1:9188.</source>
        <translation>%1 — не адрес только этой машины, например 127.0.0.1:9188.</translation>
    </message>
    <message>
        <source>%1 cannot be listened on: is it taken?</source>
        <translation>Нельзя слушать на %1: адрес занят?</translation>
    </message>
    <message>
        <source>Metrics: http://%1:%2/metrics, until stopped.</source>
        <translation>Метрики: http://%1:%2/metrics, до остановки.</translation>
    </message>
    <message>
        <source>Suspended checks that any till of a shop may take up</source>
        <translation>Отложенные чеки, которые может забрать любая касса магазина</translation>
    </message>
    <message>
        <source>Give a check free that a till has asked for and never got, since the till is gone for good</source>
        <translation>Освободить чек, который касса запросила и не получила, потому что её больше нет</translation>
    </message>
    <message>
        <source>Identifier of the check</source>
        <translation>Обозначение чека</translation>
    </message>
    <message>
        <source>No suspended check is left here.</source>
        <translation>Отложенных чеков здесь нет.</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Чек</translation>
    </message>
    <message>
        <source>Left by</source>
        <translation>Оставила касса</translation>
    </message>
    <message>
        <source>Left at</source>
        <translation>Оставлен</translation>
    </message>
    <message>
        <source>Asked for by</source>
        <translation>Запросила касса</translation>
    </message>
    <message>
        <source>No till has asked for the suspended check %1 without getting it; look at &quot;suspended list&quot;.</source>
        <translation>Нет кассы, которая запросила отложенный чек %1 и не получила его; посмотрите &quot;suspended list&quot;.</translation>
    </message>
    <message>
        <source>Any till of the shop may take up check %1.</source>
        <translation>Чек %1 может забрать любая касса магазина.</translation>
    </message>
    <message>
        <source>No</source>
        <translation>№</translation>
    </message>
    <message>
        <source>The returns that have reserved goods and are not handed over</source>
        <translation>Возвраты, которые заняли товар и ещё не переданы</translation>
    </message>
    <message>
        <source>Give back what a return has reserved that will never close</source>
        <translation>Освободить товар возврата, который уже не закроется</translation>
    </message>
    <message>
        <source>The return&apos;s identifier</source>
        <translation>Идентификатор возврата</translation>
    </message>
    <message>
        <source>No return has reserved goods for more than a day.</source>
        <translation>Ни один возврат не занимает товар дольше суток.</translation>
    </message>
    <message>
        <source>Returns that have reserved goods for more than a day: %1; look at &quot;returns list&quot;.</source>
        <translation>Возвратов, которые занимают товар дольше суток: %1; смотрите «returns list».</translation>
    </message>
    <message>
        <source>No return has reserved anything.</source>
        <translation>Ни один возврат не занимает товар.</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Возврат</translation>
    </message>
    <message>
        <source>Sale</source>
        <translation>Продажа</translation>
    </message>
    <message>
        <source>Since</source>
        <translation>С</translation>
    </message>
    <message>
        <source>There is no return %1 that has reserved anything; look at &quot;returns list&quot;.</source>
        <translation>Нет возврата %1, который занимал бы товар; смотрите «returns list».</translation>
    </message>
    <message>
        <source>What the return %1 has reserved is free.</source>
        <translation>Товар возврата %1 свободен.</translation>
    </message>
</context>
</TS>

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
        <source>As JSON, amounts in kopecks</source>
        <translation>В формате JSON, суммы в копейках</translation>
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
        <source>%1:%2: this is not TOML: %3</source>
        <translation>%1:%2: это не TOML: %3</translation>
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
</context>
<context>
    <name>Till</name>
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
        <source>The stored check was written by a newer till; use that one.</source>
        <translation>Сохранённый чек записала более новая касса; откройте его в ней.</translation>
    </message>
    <message>
        <source>The stored check is damaged and cannot be read.</source>
        <translation>Сохранённый чек повреждён, прочитать его нельзя.</translation>
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
        <source>Check %1 has been closed or abandoned by another till meanwhile; open a new one.</source>
        <translation>Тем временем чек %1 закрыла или отменила другая касса; откройте новый.</translation>
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
        <source>List the checks</source>
        <translation>Показать список чеков</translation>
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
        <source>Exit codes: 0 done, 1 failed, 2 command line or file cannot be used, 3 the sale went on
without the loyalty system.</source>
        <translation>Коды завершения: 0 — готово, 1 — не удалось, 2 — не годится командная строка или файл,
3 — продажа прошла без системы лояльности.</translation>
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
        <source>waits for message %1</source>
        <translation>ждёт сообщения %1</translation>
    </message>
    <message>
        <source>Queue</source>
        <translation>Очередь</translation>
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
        <source>keep the check for later</source>
        <translation>отложить чек</translation>
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
        <source>wait until the queue is delivered, 30 s at most</source>
        <translation>ждать доставки очереди, не дольше 30 с</translation>
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
</context>
</TS>

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the page says, in the first language of the browser that it knows.

const russian = {
    'Exchanges': 'Обмен', 'Books': 'Книга', 'Faults': 'Неисправности', 'Try a check': 'Пробный чек',
    'Rules': 'Правила', 'Views': 'Разделы',
    'connected': 'на связи', 'no connection to the simulator': 'нет связи с симулятором',
    'Server away': 'Сервер недоступен',
    'Time': 'Время', 'Operation': 'Операция', 'Check': 'Чек', 'Card': 'Карта', 'Status': 'Статус',
    'Duration': 'Длительность', 'Fault': 'Неисправность', 'Text': 'Текст', 'Reason': 'Причина',
    'Filter': 'Отбор', 'All exchanges': 'Весь обмен', 'any': 'любой',
    'ms': 'мс', 'exchanges shown': 'показано обменов', 'of': 'из',
    'No exchange yet: point a till here.': 'Обменов пока нет: направьте сюда кассу.',
    'Request': 'Запрос', 'Answer': 'Ответ', 'Close': 'Закрыть', 'Exchange': 'Обмен',
    'Copy as curl': 'Скопировать как curl', 'Send again': 'Отправить ещё раз',
    'Copied.': 'Скопировано.', 'Sent again: the answer was': 'Отправлено ещё раз, ответ:',
    'The browser lets nothing be copied: take the line from here.':
        'Браузер не дал скопировать: возьмите строку отсюда.',
    'Strict mode objects': 'Замечания строгого режима',
    'Against the pre-check before': 'Отличия от прошлой предпроверки',
    'No difference.': 'Отличий нет.', 'Booked by it': 'Проведено по нему',
    'Nothing is booked for this check.': 'По этому чеку ничего не проведено.',
    'Side': 'Сторона', 'Element': 'Элемент', 'empty': 'пусто', 'Loading': 'Загрузка',
    'Cards': 'Карты', 'Checks': 'Чеки', 'Owner': 'Владелец', 'Opening': 'Было',
    'Earned': 'Начислено', 'Spent': 'Списано', 'Given back': 'Возвращено',
    'Taken back': 'Отозвано', 'Balance': 'Баланс', 'Course of the balance': 'Ход баланса',
    'Type': 'Вид', 'sale': 'продажа', 'return': 'возврат', 'Total': 'Сумма',
    'Discount': 'Скидка', 'Paid': 'Оплачено', 'Line': 'Строка', 'Goods': 'Товар',
    'Quantity': 'Количество', 'Returns of this sale': 'Возвраты этой продажи',
    'The books agree.': 'Книга сходится.',
    'The books do not agree: the balance of a card is not its opening balance and its movements.':
        'Книга не сходится: баланс карты не равен начальному балансу и движениям по ней.',
    'Booked': 'Проведено', 'As the rules are now': 'По нынешним правилам',
    'yes': 'да', 'no': 'нет', 'Sum': 'Итого', 'No check is confirmed yet.': 'Ни один чек ещё не подтверждён.',
    'Show': 'Показать', 'Newer': 'Новее', 'Older': 'Старее', 'Date': 'Дата', 'Number': 'Номер',
    'Arm a fault': 'Подготовить неисправность', 'Kind': 'Вид', 'Times': 'Сколько раз', 'Arm': 'Подготовить',
    'From request': 'С запроса', 'Seconds': 'Секунды', 'always': 'всегда',
    'Faults in the order in which they strike': 'Неисправности в том порядке, в котором срабатывают',
    'Struck': 'Сработала', 'Matched': 'Подошло', 'Remove': 'Убрать', 'Remove all': 'Убрать все',
    'armed': 'подготовлена', 'from the rules': 'из правил', 'From': 'Откуда',
    'Nothing goes wrong on purpose.': 'Намеренных неисправностей нет.', 'All cards': 'Все карты',
    'All operations': 'Все операции', 'the last that struck': 'сработала последней',
    'Points to use': 'Списать баллов', 'Goods code': 'Код товара', 'Least total': 'Не ниже',
    'Add a line': 'Добавить строку', 'Work out': 'Рассчитать', 'Lines': 'Строки',
    'Rule': 'Правило', 'Base': 'База', 'Exact': 'Точно', 'Granted': 'Дано', 'What': 'Что',
    'Why': 'Почему', 'built-in rules': 'встроенные правила', 'File': 'Файл',
    'The file is followed as it stands.': 'Файл действует в этом виде.',
    'The file is not followed; the rules before it go on:':
        'Файл не действует, работают прежние правила:',
};

/** The language that the page speaks: "ru" or "en". */
export const language = (navigator.languages ?? [navigator.language])
    .map((name) => name.slice(0, 2).toLowerCase()).find((name) => name === 'ru' || name === 'en') ?? 'en';

/** The text in that language. */
export const text = (english) => (language === 'ru' ? russian[english] ?? english : english);

const locale = language === 'ru' ? 'ru-RU' : 'en-GB';
const clock = new Intl.DateTimeFormat(locale, {
    hour: '2-digit', minute: '2-digit', second: '2-digit', fractionalSecondDigits: 3,
});
const decimal = new Intl.NumberFormat(locale, { minimumFractionDigits: 2, maximumFractionDigits: 2 });
const whole = new Intl.NumberFormat(locale);

export const timeText = (milliseconds) => clock.format(milliseconds);
/** amount: as the server writes it, as in "-12.50"; what is formatted as a text stays exact. */
export const amountText = (amount) => decimal.format(amount);
export const countText = (count) => whole.format(count);
export const durationText = (milliseconds) =>
    `${milliseconds < 10 ? milliseconds.toFixed(1) : Math.round(milliseconds)} ${text('ms')}`;

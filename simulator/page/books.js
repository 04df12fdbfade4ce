// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The view of the books: cards with their balances, checks with their lines and returns, and
// whether all of it agrees.

import { get } from './api.js';
import { lineChart } from './chart.js';
import { make, table } from './dom.js';
import { amountText, countText, text } from './texts.js';

const amounts = ['total', 'discount', 'paid', 'earned', 'spent', 'givenBack', 'takenBack'];
const amountHeads = ['Total', 'Discount', 'Paid', 'Earned', 'Spent', 'Given back', 'Taken back'];
const cardAmounts = ['opening', 'earned', 'spent', 'givenBack', 'takenBack', 'balance'];
const cardHeads = ['Opening', 'Earned', 'Spent', 'Given back', 'Taken back', 'Balance'];
const pause = 1000; // between two readings, however fast checks are booked

const shows = (name, does) => make('button', { type: 'button', class: 'link', onclick: does }, name);

function lineTable(check) {
    const heads = ['Line', 'Goods', 'Quantity', 'Total', 'Discount', 'Spent', 'Earned', 'Given back', 'Taken back'];
    const names = ['total', 'discount', 'spent', 'earned', 'givenBack', 'takenBack'];
    return table(`${text('Lines')} ${check.id}`, heads.map(text), (check.lines ?? []).map((line) =>
        [String(line.line), line.sku, String(line.thousandths / 1000),
            ...names.map((name) => amountText(line[name]))]), 2);
}

/** By which rule each amount of a check and of its lines would come about now. */
function reasonTable(check) {
    const words = Object.fromEntries(amounts.map((name, i) => [name, amountHeads[i]]));
    const heads = ['Line', 'What', 'Rule', 'As the rules are now', 'Booked'];
    return table(`${text('Rules')} ${check.id}`, heads.map(text), check.reasons.map((reason) => [
        reason.line === 0 ? text('Check') : String(reason.line), text(words[reason.what]), reason.rule,
        text(reason.fits ? 'yes' : 'no'), amountText(reason.amount)]), 4);
}

function checkView(check) {
    return make('section', { class: check.type === 'return' ? 'returned' : '' },
        make('h3', { tabindex: -1 }, `${text(check.type)} ${check.id}`),
        table(check.id, amountHeads.map(text), [amounts.map((name) => amountText(check[name]))], 0),
        lineTable(check), check.reasons?.length > 0 ? reasonTable(check) : null);
}

export class Books {
    name = 'Books';
    #timer = 0;
    #isShown = false;

    constructor(live, say) {
        this.say = say;
        this.agreement = make('p', { role: 'status' });
        this.cards = make('section', {});
        this.card = make('section', {});
        this.checks = make('section', {});
        this.check = make('section', {});
        this.element = make('div', {}, make('h2', {}, text('Cards')), this.agreement, this.cards, this.card,
            make('h2', {}, text('Checks')), this.checks, this.check);
        live.addEventListener('confirmations', () => this.#soon());
    }

    shown() {
        this.#isShown = true;
        this.read();
    }

    #soon() {
        if (this.#isShown && this.element.isConnected && this.#timer === 0) {
            this.#timer = setTimeout(() => {
                this.#timer = 0;
                this.read();
            }, pause);
        }
    }

    async read() {
        try {
            this.#showCards(await get('/cards'));
            await this.#showChecks('/checks');
        } catch (refused) {
            this.say(refused.message);
        }
    }

    #showCards(books) {
        this.agreement.textContent = books.agree ? text('The books agree.') : `${text(
            'The books do not agree: the balance of a card is not its opening balance and its movements.',
        )} ${books.wrongCard} ${books.wrongCheck}`;
        this.agreement.classList.toggle('finding', !books.agree);
        const row = (card, first) => [first, card.owner, ...cardAmounts.map((name) => amountText(card[name]))];
        this.cards.replaceChildren(table(text('Cards'), ['Card', 'Owner', ...cardHeads].map(text), [
            ...books.cards.map((card) => row(card, shows(card.number, () => this.#showCard(card.number)))),
            row(books.sums, `${text('Sum')} (${countText(books.checks)})`)], 2));
    }

    async #showCard(number) {
        try {
            const card = await get(`/cards/${encodeURIComponent(number)}`);
            const course = [card.course.length > 0 ? null : card.opening,
                ...card.course.map((point) => point.balance)].filter((amount) => amount !== null);
            const title = `${text('Course of the balance')}: ${card.number} ${card.owner}`;
            this.card.replaceChildren(make('h3', { tabindex: -1 }, title), lineChart(course, title),
                table(title, ['Check', 'Date', 'Balance'].map(text), card.course.map((point) =>
                    [point.check, point.date, amountText(point.balance)]), 2));
            this.card.querySelector('h3').focus();
        } catch (refused) {
            this.say(refused.message);
        }
    }

    async #showChecks(path) {
        const page = await get(path);
        const rows = page.checks.map((check) => [
            shows(check.id, () => this.#showCheck(check.originalId || check.id)), text(check.type), check.number,
            check.date, check.card, ...amounts.map((name) => amountText(check[name]))]);
        this.checks.replaceChildren(
            rows.length === 0 ? make('p', {}, text('No check is confirmed yet.')) : table(text('Checks'),
                ['Check', 'Type', 'Number', 'Date', 'Card', ...amountHeads].map(text), rows, 5),
            make('p', { class: 'buttons' },
                path === '/checks' ? null : shows(text('Newer'), () => this.#turn('/checks')),
                page.next === 0 ? null : shows(text('Older'), () => this.#turn(`/checks?before=${page.next}`))));
    }

    async #turn(path) {
        try {
            await this.#showChecks(path);
        } catch (refused) {
            this.say(refused.message);
        }
    }

    async #showCheck(id) {
        try {
            const check = await get(`/checks/${encodeURIComponent(id)}`);
            this.check.replaceChildren(checkView(check),
                ...check.returns.length === 0 ? [] : [make('h3', { class: 'returned' }, text('Returns of this sale'))],
                ...check.returns.map(checkView));
            this.check.querySelector('h3').focus();
        } catch (refused) {
            this.say(refused.message);
        }
    }
}

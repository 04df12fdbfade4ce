// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The view of a check to try: what it would be granted, and why.

import { get, post } from './api.js';
import { choice, field, make, table } from './dom.js';
import { amountText, text } from './texts.js';

const words = { discount: 'Discount', earned: 'Earned' };

export class Trial {
    name = 'Try a check';

    constructor(live, say) {
        this.say = say;
        this.card = choice([], { name: 'card' });
        this.points = make('input', { name: 'points', class: 'short', value: '0', inputmode: 'decimal' });
        this.lines = make('div', { class: 'lines' });
        this.result = make('section', { 'aria-live': 'polite' });
        this.element = make('div', {}, make('form', { 'aria-label': text('Try a check'),
            onsubmit: (event) => {
                event.preventDefault();
                this.#work();
            } },
        make('div', { class: 'form' }, field(text('Card'), this.card), field(text('Points to use'), this.points)),
        this.lines,
        make('p', { class: 'buttons' },
            make('button', { type: 'button', onclick: () => this.#addLine('', '') }, text('Add a line')),
            make('button', {}, text('Work out')))), this.result);
        this.#addLine('1001', '100.00');
    }

    #addLine(sku, total) {
        const input = (name, value) => make('input', { name, value, class: 'short', autocomplete: 'off' });
        const row = make('div', { class: 'form line' }, field(text('Goods code'), input('sku', sku)),
            field(text('Total'), input('total', total)), field(text('Least total'), input('minTotal', '0')),
            make('button', { type: 'button', onclick: () => row.remove() }, text('Remove')));
        this.lines.append(row);
    }

    async shown() {
        try {
            const { cards } = await get('/cards');
            const chosen = this.card.value;
            this.card.replaceChildren(...choice(cards.map((card) =>
                [card.number, `${card.number} ${card.owner}`])).children);
            this.card.value = cards.some((card) => card.number === chosen) ? chosen : cards[0]?.number ?? '';
        } catch (refused) {
            this.say(refused.message);
        }
    }

    async #work() {
        const value = (row, name) => row.querySelector(`[name=${name}]`).value.trim().replace(',', '.');
        const lines = [...this.lines.children].map((row) =>
            ({ sku: value(row, 'sku'), total: value(row, 'total') || '0', minTotal: value(row, 'minTotal') || '0' }));
        try {
            this.#show(await post('/try', { card: this.card.value,
                points: this.points.value.trim().replace(',', '.') || '0', lines }));
            this.say();
        } catch (refused) {
            this.say(refused.message);
        }
    }

    #show(trial) {
        const facts = [['Total', 'total'], ['Discount', 'discount'], ['Spent', 'points'], ['Paid', 'toPay'],
            ['Earned', 'earned'], ['Balance', 'balance']];
        const heads = ['Line', 'Goods', 'What', 'Rule', 'Base', 'Exact', 'Granted'];
        this.result.replaceChildren(
            table(text('Try a check'), facts.map(([name]) => text(name)),
                [facts.map(([, key]) => amountText(trial[key]))], 0),
            table(text('Lines'), heads.map(text), trial.lines.flatMap((line) => line.grants.map((grant) => [
                String(line.line), line.sku, text(words[grant.what] ?? grant.what),
                grant.limit ? `${grant.rule}; ${grant.limit}` : grant.rule,
                amountText(grant.base), grant.exact, amountText(grant.granted)])), 4));
    }
}

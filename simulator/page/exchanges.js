// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The view of the exchanges: the list, its filter, and the one that is opened.

import { get } from './api.js';
import { exchangeView } from './exchange.js';
import { choice, field, make } from './dom.js';
import { VirtualList } from './list.js';
import { countText, durationText, text, timeText } from './texts.js';

const typingPause = 200;

const cells = (row) => [
    timeText(row.time), row.operation, row.check || '–', row.card || '–', String(row.status),
    durationText(row.milliseconds), row.fault,
];

export class Exchanges {
    name = 'Exchanges';
    #shown = [];
    #inBodies = null; // the numbers of those that hold the text, as far as was looked
    #timer = 0;
    #search = 0;

    constructor(live, say) {
        this.live = live;
        this.say = say;
        const heads = ['Time', 'Operation', 'Check', 'Card', 'Status', 'Duration', 'Fault'].map(text);
        this.list = new VirtualList(text('All exchanges'), heads, cells, (row) => this.open(row.number));
        this.count = make('p', { class: 'count' });
        this.detail = make('section', { class: 'detail', hidden: true, 'aria-label': text('Exchange') });
        this.element = make('div', { class: 'exchanges' },
            this.#filterForm(), this.count, this.list.element, this.detail);
        live.addEventListener('rows', () => this.refilter());
        this.refilter();
    }

    #filterForm() {
        const typed = () => this.#typed();
        this.inputs = {
            card: make('input', { name: 'card', oninput: typed, autocomplete: 'off' }),
            check: make('input', { name: 'check', oninput: typed, autocomplete: 'off' }),
            status: choice([['', text('any')], ['2', '2xx'], ['3', '3xx'], ['4', '4xx'], ['5', '5xx']],
                { name: 'status', onchange: typed }),
            text: make('input', { name: 'text', type: 'search', oninput: typed, autocomplete: 'off' }),
        };
        return make('form', { class: 'filter', role: 'search', 'aria-label': text('Filter'),
            onsubmit: (event) => event.preventDefault() },
        field(text('Card'), this.inputs.card), field(text('Check'), this.inputs.check),
        field(text('Status'), this.inputs.status), field(text('Text'), this.inputs.text));
    }

    #typed() {
        clearTimeout(this.#timer);
        this.#timer = setTimeout(() => {
            this.#lookInBodies();
            this.refilter();
        }, typingPause);
    }

    /** Lets the server look for the text, for the bodies lie there. */
    async #lookInBodies() {
        const wanted = this.inputs.text.value.trim();
        const search = ++this.#search;
        this.#inBodies = wanted === '' ? null : new Set();
        let after = 0;
        while (wanted !== '' && search === this.#search) {
            try {
                const found = await get(`/exchanges?after=${after}&text=${encodeURIComponent(wanted)}`);
                if (search !== this.#search) {
                    return;
                }
                found.exchanges.forEach((row) => this.#inBodies.add(row.number));
                this.refilter();
                if (found.next >= found.last) { // those that come are looked for as they come
                    this.searchedTo = found.next;
                    return;
                }
                after = found.next;
            } catch (refused) {
                this.say(refused.message);
                return;
            }
        }
    }

    #matches(row) {
        const { card, check, status } = this.inputs;
        const wanted = this.inputs.text.value.trim().toLowerCase();
        return row.card.includes(card.value.trim()) && row.check.includes(check.value.trim()) &&
            String(row.status).startsWith(status.value) &&
            (wanted === '' || this.#inBodies?.has(row.number) ||
                cells(row).concat(row.reason).join(' ').toLowerCase().includes(wanted));
    }

    refilter() {
        const isFiltered = Object.values(this.inputs).some((input) => input.value.trim() !== '');
        this.#shown = isFiltered ? this.live.rows.filter((row) => this.#matches(row)) : this.live.rows;
        this.list.show(this.#shown);
        this.count.textContent = this.live.rows.length === 0
            ? text('No exchange yet: point a till here.')
            : `${text('exchanges shown')}: ${countText(this.#shown.length)} ${text('of')} ${countText(this.live.rows.length)}`;
    }

    async open(number) {
        try {
            const exchange = await get(`/exchanges/${number}`);
            this.detail.replaceChildren(await exchangeView(exchange, this.say, () => this.close()));
            this.detail.hidden = false;
            this.detail.querySelector('h2').focus();
        } catch (refused) {
            this.say(refused.message);
        }
    }

    close() {
        this.detail.hidden = true;
        this.detail.replaceChildren();
        this.list.element.focus();
    }
}

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
    #inBodies = null; // the numbers of those that hold the text; null where there is none
    #searchedTo = 0; // the last one that was looked into for the text
    #judgedTo = 0; // the last one that was there when all were filtered
    #isSearching = false;
    #timer = 0;
    #search = 0; // the number of the text

    constructor(live, say) {
        this.live = live;
        this.say = say;
        const heads = ['Time', 'Operation', 'Check', 'Card', 'Status', 'Duration', 'Fault'].map(text);
        this.list = new VirtualList(text('All exchanges'), heads, cells, (row) => this.open(row.number));
        this.count = make('p', { class: 'count' });
        this.detail = make('section', { class: 'detail', hidden: true, 'aria-label': text('Exchange') });
        this.element = make('div', { class: 'exchanges' },
            this.#filterForm(), this.count, this.list.element, this.detail);
        live.addEventListener('rows', (event) => this.#add(event.detail));
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
        this.#timer = setTimeout(() => this.#filterAnew(), typingPause);
    }

    #filterAnew() {
        this.#inBodies = this.inputs.text.value.trim() === '' ? null : new Set();
        this.#searchedTo = 0;
        this.#isSearching = false;
        ++this.#search;
        this.refilter();
        this.#searchOn();
    }

    /** Lets the server look for the text in those exchanges that it was not looked for in yet. */
    async #searchOn() {
        if (this.#inBodies === null || this.#isSearching) {
            return;
        }
        const search = this.#search;
        const wanted = encodeURIComponent(this.inputs.text.value.trim());
        this.#isSearching = true;
        try {
            while (this.#searchedTo < this.live.known) {
                const found = await get(`/exchanges?after=${this.#searchedTo}&text=${wanted}`);
                if (search !== this.#search) {
                    return;
                }
                found.exchanges.forEach((row) => this.#inBodies.add(row.number));
                this.#takeSearched(found.next);
            }
        } catch (refused) {
            this.say(refused.message);
        } finally {
            if (search === this.#search) {
                this.#isSearching = false;
            }
        }
    }

    #takeSearched(next) {
        const from = this.#searchedTo;
        this.#searchedTo = next;
        if (from < this.#judgedTo) { // by what stands in the rows alone
            this.refilter();
            return;
        }
        let start = this.live.rows.length;
        while (start > 0 && this.live.rows[start - 1].number > from) {
            --start;
        }
        this.#append(this.live.rows.slice(start).filter((row) => row.number <= next));
    }

    #matches(row) {
        const { card, check, status } = this.inputs;
        const wanted = this.inputs.text.value.trim().toLowerCase();
        return row.card.includes(card.value.trim()) && row.check.includes(check.value.trim()) &&
            String(row.status).startsWith(status.value) &&
            (wanted === '' || this.#inBodies?.has(row.number) ||
                cells(row).concat(row.reason).join(' ').toLowerCase().includes(wanted));
    }

    /** Takes new rows in; those that were looked at before are not looked at again. */
    #add(rows) {
        if (rows.length === this.live.rows.length) { // another server
            this.#filterAnew();
        } else if (this.#shown === this.live.rows) {
            this.#show();
        } else if (this.#inBodies === null) {
            this.#append(rows);
        } else { // the others when the server has looked into them
            this.#append(rows.filter((row) => row.number <= this.#searchedTo));
            this.#searchOn();
        }
    }

    #append(rows) {
        for (const row of rows) {
            if (this.#matches(row)) {
                this.#shown.push(row);
            }
        }
        this.#show();
    }

    refilter() {
        const isFiltered = Object.values(this.inputs).some((input) => input.value.trim() !== '');
        this.#shown = isFiltered ? this.live.rows.filter((row) => this.#matches(row)) : this.live.rows;
        this.#judgedTo = this.live.known;
        this.#show();
    }

    #show() {
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

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Follows the server: the rows of the exchanges without a gap, and what else has changed. An event
// may leave rows out when there were many; they are asked for by their numbers.

import { get } from './api.js';

const atOnce = 2000;
const mostTexts = 1000;

export class Live extends EventTarget {
    rows = []; // in the order of their numbers
    known = 0; // the number of the last exchange that was read
    state = {};
    #texts = new Map();
    #fetching = false;
    #wanted = 0;

    start() {
        const source = new EventSource('/events');
        source.addEventListener('open', () => this.#tell('connection', true));
        source.addEventListener('error', () => this.#tell('connection', false));
        source.addEventListener('message', (message) => this.#take(JSON.parse(message.data)));
    }

    #tell(type, detail) {
        this.dispatchEvent(new CustomEvent(type, { detail }));
    }

    #take(news) {
        if (news.last < this.known) { // another server at the same address
            this.rows.length = 0;
            this.known = 0;
        }
        this.#wanted = news.last;
        if (!this.#fetching && news.rows.length > 0 && news.rows[0].number === this.known + 1) {
            this.#append(news.rows, news.rows.at(-1).number);
        }
        const before = this.state;
        this.state = news;
        for (const topic of ['faults', 'confirmations', 'rules', 'away']) {
            if (before[topic] !== news[topic]) {
                this.#tell(topic, news[topic]);
            }
        }
        this.#catchUp();
    }

    /** A row with what is shown and chosen by; a text that many rows have is kept once. */
    #kept({ number, time, operation, check, card, status, reason, milliseconds, fault }) {
        const once = (text) => {
            if (this.#texts.size > mostTexts) {
                this.#texts.clear();
            }
            const known = this.#texts.get(text);
            if (known === undefined) {
                this.#texts.set(text, text);
            }
            return known ?? text;
        };
        return {
            number, time, operation: once(operation), check: once(check), card: once(card), status,
            reason: once(reason), milliseconds, fault: once(fault),
        };
    }

    #append(rows, last) {
        const kept = rows.map((row) => this.#kept(row));
        for (const row of kept) {
            this.rows.push(row);
        }
        this.known = last;
        this.#tell('rows', kept);
    }

    async #catchUp() {
        if (this.#fetching) {
            return;
        }
        this.#fetching = true;
        try {
            while (this.known < this.#wanted) {
                const page = await get(`/exchanges?after=${this.known}&most=${atOnce}`);
                this.#append(page.exchanges, page.next);
            }
        } catch {
            // the next event asks again
        } finally {
            this.#fetching = false;
        }
    }
}

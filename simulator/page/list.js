// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A list of any length of which only the rows in sight are elements. The newest row is on top.

import { make } from './dom.js';

const spare = 8; // rows beyond the edges

export class VirtualList {
    #rows = []; // may be one that grows
    #count = 0; // how many were shown last
    #chosen = -1; // index in #rows
    #asked = false;
    #height = 0;
    #elements = new Map(); // of the rows in sight

    /**
     * label: what the list is called; cells(row): the cells of a row, as elements;
     * open(row): what happens when a row is chosen.
     */
    constructor(label, heads, cells, open) {
        this.cells = cells;
        this.open = open;
        this.heads = make('div', { role: 'row', class: 'row heads', 'aria-rowindex': 1 },
            heads.map((head) => make('span', { role: 'columnheader' }, head)));
        this.filler = make('div', { role: 'presentation' });
        this.body = make('div', { role: 'rowgroup', class: 'body' });
        this.element = make('div', {
            role: 'grid', class: 'list', tabindex: 0, 'aria-label': label,
            onscroll: () => this.refresh(), onkeydown: (event) => this.#press(event),
            onclick: (event) => this.#click(event),
        }, make('div', { role: 'rowgroup', class: 'head' }, this.heads), this.body, this.filler);
        new ResizeObserver(() => {
            this.#height = 0;
            this.refresh();
        }).observe(this.element);
    }

    /** Shows these rows, which are in the order in which they came. */
    show(rows) {
        const chosen = this.#rows[this.#chosen];
        const fromTop = this.element.scrollTop;
        const grown = rows.length - this.#count;
        this.#rows = rows;
        this.#count = rows.length;
        if (rows[this.#chosen] !== chosen) { // not only grown
            this.#chosen = chosen ? rows.lastIndexOf(chosen) : -1;
        }
        if (fromTop > 0 && grown > 0) { // what is read stays where it is
            this.#layOut();
            this.element.scrollTop = fromTop + grown * this.#rowHeight();
        }
        this.refresh();
    }

    refresh() {
        if (!this.#asked) {
            this.#asked = true;
            requestAnimationFrame(() => {
                this.#asked = false;
                this.#layOut();
            });
        }
    }

    #rowHeight() {
        if (this.#height === 0) {
            this.#height = parseFloat(getComputedStyle(this.element).getPropertyValue('--row')) || 28;
        }
        return this.#height;
    }

    #layOut() {
        const height = this.#rowHeight();
        const count = this.#rows.length;
        const top = Math.max(0, Math.floor(this.element.scrollTop / height) - spare);
        const end = Math.min(count, Math.ceil((this.element.scrollTop + this.element.clientHeight) / height) + spare);
        this.element.setAttribute('aria-rowcount', count + 1);
        this.body.style.transform = `translateY(${top * height}px)`;
        this.filler.style.height = `${Math.max(0, count - Math.max(0, end - top)) * height}px`;
        const shown = [];
        for (let place = top; place < end; ++place) {
            shown.push(this.#rowElement(count - 1 - place, place));
        }
        this.#put(shown);
    }

    /** Puts the rows in without touching those that stay: a click on one of them must not be lost. */
    #put(shown) {
        const stays = new Set(shown);
        for (const element of [...this.body.children]) {
            if (!stays.has(element)) {
                element.remove();
            }
        }
        let at = this.body.firstChild;
        for (const element of shown) {
            if (element === at) {
                at = at.nextSibling;
            } else {
                this.body.insertBefore(element, at);
            }
        }
        this.#elements = new Map(shown.map((element) => [this.#rows[element.dataset.index], element]));
    }

    #rowElement(index, place) {
        const row = this.#rows[index];
        const chosen = index === this.#chosen;
        const element = this.#elements.get(row) ?? make('div', {
            role: 'row', class: row.fault ? 'row struck' : row.status >= 400 ? 'row refused' : 'row',
            id: `row-${row.number}`,
        }, this.cells(row).map((cell) => make('span', { role: 'gridcell' }, cell)));
        element.setAttribute('aria-rowindex', place + 2);
        element.setAttribute('aria-selected', chosen);
        element.dataset.index = index;
        if (chosen) {
            this.element.setAttribute('aria-activedescendant', element.id);
        }
        return element;
    }

    #choose(index) {
        this.#chosen = Math.min(Math.max(index, 0), this.#rows.length - 1);
        const height = this.#rowHeight();
        const at = (this.#rows.length - 1 - this.#chosen) * height;
        const list = this.element;
        const inSight = list.clientHeight - this.heads.offsetHeight - height;
        if (at < list.scrollTop) {
            list.scrollTop = at;
        } else if (at > list.scrollTop + inSight) {
            list.scrollTop = at - inSight;
        }
        this.#layOut();
    }

    #press(event) {
        const page = Math.max(1, Math.floor(this.element.clientHeight / this.#rowHeight()) - 2);
        const newest = this.#rows.length - 1;
        const from = this.#chosen < 0 ? newest + 1 : this.#chosen;
        const to = {
            ArrowDown: from - 1, ArrowUp: from + 1, PageDown: from - page, PageUp: from + page,
            Home: newest, End: 0,
        }[event.key];
        if (to !== undefined) {
            event.preventDefault();
            this.#choose(to);
        } else if ((event.key === 'Enter' || event.key === ' ') && this.#rows[this.#chosen]) {
            event.preventDefault();
            this.open(this.#rows[this.#chosen]);
        }
    }

    #click(event) {
        const element = event.target.closest('[data-index]');
        if (element) {
            this.#choose(Number(element.dataset.index));
            this.open(this.#rows[this.#chosen]);
        }
    }
}

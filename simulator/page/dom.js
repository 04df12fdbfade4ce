// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// How elements are made. What is shown is a text node or an attribute that holds no address and no
// script: nothing that came from outside can become markup.

const svgNames = 'http://www.w3.org/2000/svg';

function filled(element, attributes, children) {
    for (const [name, value] of Object.entries(attributes)) {
        if (name.startsWith('on')) {
            element.addEventListener(name.slice(2), value);
        } else if (value === true) {
            element.setAttribute(name, '');
        } else if (value !== false && value !== undefined && value !== null) {
            element.setAttribute(name, String(value));
        }
    }
    element.append(...children.flat().filter((child) => child !== null && child !== undefined));
    return element;
}

/** An element with attributes and children; functions under "on..." are listeners. */
export function make(name, attributes = {}, ...children) {
    return filled(document.createElement(name), attributes, children);
}

/** The same in a drawing. */
export function draw(name, attributes = {}, ...children) {
    return filled(document.createElementNS(svgNames, name), attributes, children);
}

/** A table with a heading; rows are arrays of texts or elements. numeric: from which column on. */
export function table(caption, heads, rows, numeric = heads.length) {
    const side = (column) => (column >= numeric ? { class: 'amount' } : {});
    return make('div', { class: 'scroll', tabindex: 0, role: 'region', 'aria-label': caption },
        make('table', {},
            make('caption', { class: 'hidden' }, caption),
            make('thead', {}, make('tr', {},
                heads.map((head, column) => make('th', { scope: 'col', ...side(column) }, head)))),
            make('tbody', {}, rows.map((row) => make('tr', {},
                row.map((cell, column) => make('td', side(column), cell)))))));
}

/** A field with its label. */
export function field(label, control) {
    return make('label', { class: 'field' }, make('span', {}, label), control);
}

/** A choice of texts; each option is [value, text]. */
export function choice(options, attributes = {}) {
    return make('select', attributes, options.map(([value, text]) => make('option', { value }, text)));
}

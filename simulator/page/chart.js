// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A course of amounts as a line.

import { draw } from './dom.js';
import { amountText } from './texts.js';

const width = 640;
const height = 200;
const edge = { left: 90, right: 10, top: 14, bottom: 14 };

/** texts: amounts as the server writes them, the oldest first. label: what a reader of the screen is told. */
export function lineChart(texts, label) {
    const amounts = texts.map(Number); // a place in a drawing need not be exact
    const least = Math.min(...amounts, 0);
    const most = Math.max(...amounts, least + 1);
    const across = (index) => edge.left + (width - edge.left - edge.right) *
        (amounts.length === 1 ? 0.5 : index / (amounts.length - 1));
    const down = (amount) => edge.top + (height - edge.top - edge.bottom) * (most - amount) / (most - least);
    const level = (amount) => [
        draw('line', { class: 'axis', x1: edge.left, x2: width - edge.right, y1: down(amount), y2: down(amount) }),
        draw('text', { x: edge.left - 6, y: down(amount) + 4, 'text-anchor': 'end' }, amountText(amount)),
    ];
    return draw('svg', { class: 'chart', viewBox: `0 0 ${width} ${height}`, role: 'img', 'aria-label': label },
        level(most), level(least),
        draw('polyline', { class: 'course',
            points: amounts.map((amount, i) => `${across(i)},${down(amount)}`).join(' ') }),
        amounts.length > 60 ? [] : amounts.map((amount, i) =>
            draw('circle', { class: 'point', cx: across(i), cy: down(amount), r: 3 },
                draw('title', {}, amountText(texts[i])))));
}

// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// One exchange: request and answer side by side and what is to be said about them.

import { get, post } from './api.js';
import { make, table } from './dom.js';
import { amountText, durationText, text, timeText } from './texts.js';
import { differences, xmlView } from './xml.js';

/** A word of a shell's line that stands for itself whatever is in it. */
const quoted = (word) => `'${word.replaceAll("'", "'\\''")}'`;

/** The exchange as a command; who runs it adds the authorization. */
export function curlLine(exchange, server) {
    const type = exchange.requestType
        ? ` -H ${quoted(`Content-Type: ${exchange.requestType}`)}` : '';
    const body = exchange.request ? ` --data-binary ${quoted(exchange.request)}` : '';
    return `curl -sS -X ${quoted(exchange.method)}${type}${body} ${quoted(server + exchange.path)}`;
}

async function copyLine(exchange, place, say) {
    const { url } = await get('/server');
    const line = curlLine(exchange, url.replace(/\/$/, ''));
    try {
        await navigator.clipboard.writeText(line);
        say(text('Copied.'));
    } catch {
        say(text('The browser lets nothing be copied: take the line from here.'));
    }
    place.textContent = line;
    place.hidden = false;
}

async function sendAgain(exchange, say) {
    try {
        const answer = await post(`/exchanges/${exchange.number}/send`);
        say(`${text('Sent again: the answer was')} ${answer.status} ${answer.reason}`);
    } catch (refused) {
        say(refused.message);
    }
}

async function differenceView(exchange) {
    if (exchange.operation !== 'precheck' || !exchange.earlierPrecheck) {
        return null;
    }
    const earlier = await get(`/exchanges/${exchange.earlierPrecheck}`);
    const rows = [['Request', 'request'], ['Answer', 'answer']].flatMap(([name, key]) =>
        differences(earlier[key], exchange[key]).map((row) =>
            [text(name), row.path, row.before ?? '–', row.after ?? '–']));
    const title = `${text('Against the pre-check before')} (${exchange.earlierPrecheck})`;
    return make('section', {}, make('h3', {}, title), rows.length === 0
        ? make('p', {}, text('No difference.'))
        : table(title, [text('Side'), text('Element'), String(exchange.earlierPrecheck), String(exchange.number)], rows));
}

async function bookingView(exchange) {
    if (exchange.operation !== 'checkconfirm' || !exchange.check) {
        return null;
    }
    const heading = make('h3', {}, text('Booked by it'));
    try {
        const check = await get(`/checks/${encodeURIComponent(exchange.check)}`);
        const names = ['total', 'discount', 'paid', 'earned', 'spent', 'givenBack', 'takenBack'];
        const heads = ['Total', 'Discount', 'Paid', 'Earned', 'Spent', 'Given back', 'Taken back'];
        return make('section', {}, heading, table(text('Booked by it'),
            heads.map(text), [names.map((name) => amountText(check[name]))], 0));
    } catch {
        return make('section', {}, heading, make('p', {}, text('Nothing is booked for this check.')));
    }
}

function side(name, source, findings) {
    return make('section', {}, make('h3', {}, text(name)), source === ''
        ? make('p', {}, text('empty')) : xmlView(source, text(name), findings));
}

/** Each objection of strict mode; they stand at their elements as well. */
function findingList(findings) {
    return findings.length === 0 ? null : make('section', { class: 'findings' },
        make('h3', {}, text('Strict mode objects')),
        make('ul', {}, findings.map((finding) => make('li', { class: 'finding' }, finding.sentence))));
}

/** The exchange as an element. say: shows a sentence; close: what the button for that does. */
export async function exchangeView(exchange, say, close) {
    const line = make('pre', { class: 'command', hidden: true, tabindex: 0, role: 'region',
        'aria-label': 'curl' });
    const press = (name, does) => make('button', { type: 'button', onclick: does }, text(name));
    const facts = [timeText(exchange.time), exchange.operation, exchange.check, exchange.card,
        String(exchange.status), durationText(exchange.milliseconds), exchange.reason,
        exchange.fault && `${text('Fault')}: ${exchange.fault}`].filter(Boolean);
    const [difference, booking] = await Promise.all([differenceView(exchange), bookingView(exchange)]);
    return make('div', { onkeydown: (event) => event.key === 'Escape' && close() },
        make('h2', { tabindex: -1 }, `${text('Exchange')} ${exchange.number}`),
        make('p', { class: 'facts' }, facts.join(' · ')),
        make('p', { class: 'buttons' },
            press('Copy as curl', () => copyLine(exchange, line, say)),
            press('Send again', () => sendAgain(exchange, say)), press('Close', close)),
        line,
        findingList(exchange.findings),
        make('div', { class: 'sides' }, side('Request', exchange.request, exchange.findings),
            side('Answer', exchange.answer, [])),
        difference, booking);
}

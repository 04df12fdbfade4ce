// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The page: its views, which of them is shown, and the line about the server.

import { post } from './api.js';
import { Books } from './books.js';
import { make } from './dom.js';
import { Exchanges } from './exchanges.js';
import { Faults } from './faults.js';
import { Live } from './live.js';
import { RulesView } from './rules.js';
import { language, text } from './texts.js';
import { Trial } from './trial.js';

const live = new Live();
const notice = document.getElementById('notice');
/** Shows a sentence; nothing clears it, an empty one stands for a server that does not answer. */
const say = (sentence) => {
    notice.textContent = sentence === '' ? text('no connection to the simulator') : sentence ?? '';
};

document.documentElement.lang = language;

function showConnection(isThere) {
    const state = document.getElementById('state');
    state.textContent = text(isThere ? 'connected' : 'no connection to the simulator');
    state.classList.toggle('lost', !isThere);
}

function prepareSwitch() {
    const button = document.getElementById('away');
    button.textContent = text('Server away');
    live.addEventListener('away', () => button.setAttribute('aria-pressed', String(live.state.away)));
    button.addEventListener('click', async () => {
        try {
            const wanted = button.getAttribute('aria-pressed') !== 'true';
            const server = await post('/server', { away: wanted });
            button.setAttribute('aria-pressed', String(server.away));
        } catch (refused) {
            say(refused.message);
        }
    });
}

function prepareViews(views) {
    const main = document.getElementById('main');
    const nav = document.getElementById('tabs');
    nav.setAttribute('aria-label', text('Views'));
    const links = views.map((view) => make('button', { type: 'button', onclick: () => show(view) },
        text(view.name)));
    function show(view) {
        links.forEach((link, i) => {
            if (views[i] === view) {
                link.setAttribute('aria-current', 'page');
            } else {
                link.removeAttribute('aria-current');
            }
        });
        main.replaceChildren(view.element);
        view.shown?.();
    }
    nav.append(...links);
    show(views[0]);
}

live.addEventListener('connection', (event) => showConnection(event.detail));
prepareSwitch();
prepareViews([Exchanges, Books, Faults, Trial, RulesView].map((View) => new View(live, say)));
live.start();

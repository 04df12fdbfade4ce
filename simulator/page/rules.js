// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The view of the rules: their file, and what is wrong with it.

import { get } from './api.js';
import { make } from './dom.js';
import { text } from './texts.js';

export class RulesView {
    name = 'Rules';

    constructor(live, say) {
        this.say = say;
        this.content = make('div', {});
        this.element = make('div', {}, make('h2', {}, text('Rules')), this.content);
        live.addEventListener('rules', () => this.element.isConnected && this.shown());
    }

    async shown() {
        try {
            const rules = await get('/rules');
            this.content.replaceChildren(
                make('p', {}, `${text('File')}: ${rules.file || text('built-in rules')}`),
                make('p', { role: 'status', class: rules.followed ? '' : 'finding' }, rules.followed
                    ? text('The file is followed as it stands.')
                    : `${text('The file is not followed; the rules before it go on:')} ${rules.complaint}`),
                make('pre', { class: 'rules', tabindex: 0, role: 'region', 'aria-label': text('Rules') },
                    rules.text.split('\n').map((line, i) => (i + 1 === rules.line
                        ? make('mark', { class: 'wrong-line' }, `${line}\n`) : `${line}\n`))));
        } catch (refused) {
            this.say(refused.message);
        }
    }
}

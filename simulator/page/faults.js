// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The view of the faults: those that strike, and one to arm.

import { get, post, remove } from './api.js';
import { choice, field, make, table } from './dom.js';
import { text } from './texts.js';

const kinds = ['request-lost', 'hang-before-headers', 'status', 'status-after-booking', 'reply-lost', 'delay',
    'hang-after-headers', 'slow-drip', 'cut-body', 'length-too-large', 'length-too-small', 'garbled-headers',
    'garbled-body', 'wrong-encoding', 'duplicated-delivery', 'resent-by-proxy'];
const operations = ['precheck', 'paymenttry', 'checkconfirm'];

export class Faults {
    name = 'Faults';
    #struck = new Map();

    constructor(live, say) {
        this.live = live;
        this.say = say;
        this.list = make('section', { 'aria-live': 'polite' });
        this.element = make('div', {}, make('h2', {}, text('Arm a fault')), this.#form(),
            make('h2', {}, text('Faults in the order in which they strike')), this.list);
        live.addEventListener('faults', () => this.element.isConnected && this.shown());
    }

    #form() {
        const number = (name, value, least) => make('input',
            { name, type: 'number', class: 'short', min: least, value, step: least === 0 ? 'any' : 1 });
        this.inputs = {
            kind: choice(kinds.map((kind) => [kind, kind]), { name: 'kind' }),
            endpoint: choice([['', text('All operations')], ...operations.map((one) => [one, one])], { name: 'endpoint' }),
            card: make('input', { name: 'card', autocomplete: 'off' }),
            request: number('request', 1, 1),
            times: number('times', 1, 1),
            status: number('status', 500, 200),
            seconds: number('seconds', 0, 0),
        };
        const { kind, endpoint, card, request, times, status, seconds } = this.inputs;
        const statusField = field(text('Status'), status);
        const secondsField = field(text('Seconds'), seconds);
        const fit = () => {
            statusField.hidden = !kind.value.startsWith('status');
            secondsField.hidden = !/^(hang|delay|slow|length-too-large)/.test(kind.value);
        };
        kind.addEventListener('change', fit);
        fit();
        return make('form', { class: 'form', 'aria-label': text('Arm a fault'),
            onsubmit: (event) => {
                event.preventDefault();
                this.#arm();
            } },
        field(text('Kind'), kind), field(text('Operation'), endpoint), field(text('Card'), card),
        field(text('From request'), request), field(text('Times'), times), statusField, secondsField,
        make('button', {}, text('Arm')));
    }

    #arm() {
        const { kind, endpoint, card, request, times, status, seconds } = this.inputs;
        const fault = { kind: kind.value };
        if (endpoint.value) {
            fault.endpoint = endpoint.value;
        }
        if (card.value.trim()) {
            fault.card = card.value.trim();
        }
        if (request.value !== '1') {
            fault.request = Number(request.value);
        }
        if (times.value) {
            fault.times = Number(times.value);
        }
        if (kind.value.startsWith('status')) {
            fault.status = Number(status.value);
        } else if (!seconds.closest('label').hidden) {
            fault.seconds = Number(seconds.value);
        }
        this.#change(post('/faults', fault));
    }

    async #change(answer) {
        try {
            this.#show(await answer);
            this.say();
        } catch (refused) {
            this.say(refused.message);
        }
    }

    shown() {
        this.#change(get('/faults'));
    }

    /** Remembers which fault has struck since it was looked last. */
    #last(faults) {
        const struckNow = faults.filter((fault) => fault.struck > (this.#struck.get(fault.id) ?? 0));
        this.#struck = new Map(faults.map((fault) => [fault.id, fault.struck]));
        this.last = struckNow.at(-1)?.id ?? this.last;
        return this.last;
    }

    #show(faults) {
        const last = this.#last(faults);
        const heads = ['Kind', 'From', 'Operation', 'Card', 'From request', 'Times', 'Matched', 'Struck', 'Remove'];
        this.list.replaceChildren(...faults.length === 0 ? [make('p', {}, text('Nothing goes wrong on purpose.'))] : [
            table(text('Faults'), heads.map(text), faults.map((fault) => [
                fault.kind, text(fault.armed ? 'armed' : 'from the rules'), fault.endpoint ?? text('All operations'),
                fault.card ?? text('All cards'), String(fault.request),
                fault.times === null ? text('always') : String(fault.times), String(fault.matched),
                fault.id === last ? `${fault.struck} (${text('the last that struck')})` : String(fault.struck),
                make('button', { type: 'button', 'aria-label': `${text('Remove')} ${fault.kind}`,
                    onclick: () => this.#change(remove(`/faults/${fault.id}`)) }, text('Remove'))])),
            make('p', { class: 'buttons' }, make('button', { type: 'button',
                onclick: () => this.#change(remove('/faults')) }, text('Remove all')))]);
    }
}

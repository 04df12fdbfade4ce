// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The addresses of the simulator, as scripts use them too.

const token = document.querySelector('meta[name="orva-token"]').content;

/** What the server refused, or that it did not answer. */
export class Refused extends Error {}

async function ask(method, path, body) {
    const options = { method, headers: {} };
    if (method !== 'GET') {
        options.headers['X-Orva-Token'] = token;
    }
    if (method === 'POST') {
        options.headers['Content-Type'] = 'application/json';
        options.body = JSON.stringify(body ?? {});
    }
    let response;
    try {
        response = await fetch(path, options);
    } catch {
        throw new Refused('');
    }
    if (!response.ok) {
        throw new Refused((await response.text()).trim());
    }
    return response.json();
}

export const get = (path) => ask('GET', path);
export const post = (path, body) => ask('POST', path, body);
export const remove = (path) => ask('DELETE', path);

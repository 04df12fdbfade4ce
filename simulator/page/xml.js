// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A document as lines of indented, coloured text. The browser's parser is not asked: what a till
// sends may be no XML at all, and is shown as it is.

import { make } from './dom.js';

const pieces = /<!--[\s\S]*?-->|<!\[CDATA\[[\s\S]*?\]\]>|<\?[\s\S]*?\?>|<[^>]*>|[^<]+|</g;
const longestColoured = 400_000; // beyond it the colours cost more than they show

/** The pieces of a document: {kind: open|close|empty|text|other, text, name}. */
function* tokens(source) {
    for (const [piece] of source.matchAll(pieces)) {
        const name = /^<\/?([^\s/>]+)/.exec(piece)?.[1];
        if (/^<[!?]/.test(piece) || piece === '<') {
            yield { kind: 'other', text: piece };
        } else if (piece.startsWith('</')) {
            yield { kind: 'close', text: piece, name };
        } else if (piece.endsWith('/>')) {
            yield { kind: 'empty', text: piece, name };
        } else if (piece.startsWith('<') && name) {
            yield { kind: 'open', text: piece, name };
        } else if (piece.trim() !== '') {
            yield { kind: 'text', text: piece.trim() };
        }
    }
}

/**
 * The lines of a document: {depth, path, parts: [{kind, text}]}. The path is as the server's
 * sentences write it: the root left out, a number behind an element that is repeated.
 */
export function linesOf(source) {
    const lines = [];
    const open = []; // {path, counts}
    const counted = (name) => {
        const around = open.at(-1);
        const count = around ? (around.counts[name] = (around.counts[name] ?? 0) + 1) : 1;
        return open.length === 0 ? [''] : [around.path, name, count];
    };
    const pathOf = ([before, name, count]) =>
        (name === undefined ? '' : `${before ? `${before}/` : ''}${name}[${count}]`);
    let last = null;
    for (const token of tokens(source)) {
        if (token.kind === 'close') {
            const closed = open.pop();
            const joins = last && closed && last.path === closed.path && last.isOpen;
            if (joins) {
                last.parts.push(token);
                last.isOpen = false;
            } else {
                lines.push({ depth: open.length, path: closed?.path ?? '', parts: [token] });
            }
            last = null;
            continue;
        }
        if (token.kind === 'text' && last?.isOpen) {
            last.parts.push(token);
            continue;
        }
        const isElement = token.kind === 'open' || token.kind === 'empty';
        const path = isElement ? pathOf(counted(token.name)) : open.at(-1)?.path ?? '';
        last = { depth: open.length, path, parts: [token], isOpen: token.kind === 'open' };
        lines.push(last);
        if (token.kind === 'open') {
            open.push({ path, counts: Object.create(null) });
        }
    }
    return lines;
}

/** A path without the number of what stands alone: the server numbers only what may be repeated. */
const withoutFirst = (path) => path.replaceAll('[1]', '');

/** The line of a path or, where the element is missing, of what it is missing in. */
function lineAt(lineOfPath, path) {
    for (let wanted = withoutFirst(path); ; wanted = wanted.slice(0, Math.max(0, wanted.lastIndexOf('/')))) {
        const at = lineOfPath.get(wanted);
        if (at !== undefined || wanted === '') {
            return at ?? 0;
        }
    }
}

/** Puts each finding behind its element. */
function addFindings(lines, elements, findings) {
    const lineOfPath = new Map();
    lines.forEach((line, i) => {
        const path = withoutFirst(line.path);
        if (!lineOfPath.has(path)) {
            lineOfPath.set(path, i);
        }
    });
    for (const finding of findings) {
        elements[lineAt(lineOfPath, finding.path)].append(
            make('strong', { class: 'finding' }, finding.sentence), '\n');
    }
}

function lineElement(line) {
    return make('span', { class: 'xml-line' }, '  '.repeat(line.depth),
        line.parts.map((part) => make('span', { class: `xml-${part.kind}` }, part.text)), '\n');
}

/** The document as an element. findings: {path, sentence}, each put behind its element. */
export function xmlView(source, label, findings) {
    const view = make('pre', { class: 'xml', tabindex: 0, role: 'region', 'aria-label': label });
    if (source.length > longestColoured) {
        view.textContent = source;
        return view;
    }
    const lines = linesOf(source);
    const elements = lines.map(lineElement);
    if (findings.length > 0 && elements.length > 0) {
        addFindings(lines, elements, findings);
    }
    view.append(...elements);
    return view;
}

/** What differs between two documents: [{path, before, after}], null for what is not there. */
export function differences(before, after) {
    const valuesOf = (source) => {
        const values = new Map();
        for (const line of linesOf(source)) {
            if (line.parts[0].kind === 'open' || line.parts[0].kind === 'empty') {
                values.set(line.path, line.parts.filter((part) => part.kind === 'text')
                    .map((part) => part.text).join(''));
            }
        }
        return values;
    };
    const old = valuesOf(before);
    const now = valuesOf(after);
    const paths = new Set([...old.keys(), ...now.keys()]);
    return [...paths].filter((path) => old.get(path) !== now.get(path)).map((path) =>
        ({ path, before: old.get(path) ?? null, after: now.get(path) ?? null }));
}

// What the forms of the host page have in common.

import { JsonFault, readJson, writeJson } from '../desk/json.js';
import { element, setText } from '../kit/elements.js';

export const byID = (id) => document.getElementById(id);

/** Says what became of an action, where the person looks; nothing takes it away. */
export function tell(place, text, isGood = true) {
    place.className = text === '' ? '' : isGood ? 'done' : 'error';
    setText(place, text);
}

const busy = new Set(); // places of which a command is on its way

/**
 * One command of a place at a time: what is pressed twice is meant once.
 * @returns {Promise<unknown>} What the desk says to a command; undefined when it comes to nothing.
 */
export async function attempt(place, desk, command, content, done) {
    if (busy.has(place)) return undefined;
    busy.add(place);
    try {
        if (desk === undefined)
            throw new Error('There is no connection to the desk: see the top of the page.');
        const value = await desk.do(command, content);
        tell(place, typeof done === 'function' ? done(value) : done);
        return value ?? null;
    } catch (error) {
        tell(place, error.message, false);
        return undefined;
    } finally {
        busy.delete(place);
    }
}

/** A text with JSON, and what is wrong with it. */
export class JsonField {
    #area;
    #place;

    /** @param {HTMLTextAreaElement} area @param {HTMLElement} place Where faults are told. */
    constructor(area, place) {
        this.#area = area;
        this.#place = place;
        area.addEventListener('input', () => {
            if (area.getAttribute('aria-invalid') !== 'true') return;
            area.setAttribute('aria-invalid', 'false');
            tell(place, '');
        });
    }

    set(value) {
        this.#area.value = writeJson(value, { width: 72 });
        this.#area.setAttribute('aria-invalid', 'false');
    }

    focus() {
        this.#area.focus();
        this.#area.scrollIntoView({ block: 'nearest' });
    }

    /** @returns {unknown} The value; undefined, and told, when it is no JSON or `check` objects. */
    read(check) {
        try {
            const value = readJson(this.#area.value);
            const fault = check(value);
            if (fault !== undefined) throw new Error(fault);
            return value;
        } catch (fault) {
            this.#area.setAttribute('aria-invalid', 'true');
            tell(this.#place, fault.message, false);
            this.#area.focus();
            if (fault instanceof JsonFault) this.#area.setSelectionRange(fault.at, fault.at + 1);
            return undefined;
        }
    }

    /** @returns {unknown} The value; undefined without one, and nothing is told. */
    peek() {
        try {
            return readJson(this.#area.value);
        } catch {
            return undefined;
        }
    }
}

export const option = (value, textContent) => element('option', { value, textContent });

/** Fills a list of facts; what is undefined is left out. */
export function showFacts(list, facts) {
    const parts = Object.entries(facts)
        .filter(([, text]) => text !== undefined)
        .flatMap(([name, text]) => [
            element('dt', { textContent: name }),
            element('dd', { textContent: text }),
        ]);
    if (list.textContent !== parts.map(({ textContent }) => textContent).join(''))
        list.replaceChildren(...parts);
}

/**
 * Makes and removes the items of a list, and leaves alone those that stay, which may have the focus.
 * @param {HTMLElement} list
 * @param {object[]} values
 * @param {(value: object) => string} keyOf
 * @param {(value: object) => HTMLElement} make An item with a function `update(value)`.
 */
export function showItems(list, values, keyOf, make) {
    const old = new Map([...list.children].map((item) => [item.dataset.key, item]));
    const had = list.contains(document.activeElement);
    values.forEach((value, i) => {
        const key = keyOf(value);
        const item = old.get(key) ?? make(value);
        old.delete(key);
        item.dataset.key = key;
        if (list.children[i] !== item) list.insertBefore(item, list.children[i] ?? null);
        item.update(value);
    });
    for (const item of old.values()) item.remove();
    // who worked there is not thrown to the top of the page
    if (had && !list.contains(document.activeElement)) list.closest('section').querySelector('h2').focus();
}

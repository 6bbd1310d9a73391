// What is known of what is selected, beside a list.

import { element } from './elements.js';

/** @returns {HTMLElement} Names with their texts; those without a text are left out. */
export function list(pairs) {
    const shown = pairs.filter(([, text]) => text !== undefined && text !== '');
    return element(
        'dl',
        {},
        ...shown.flatMap(([name, text]) => [
            element('dt', { textContent: name }),
            element('dd', { textContent: text }),
        ]),
    );
}

export const section = (title, ...children) =>
    element('section', {}, element('h3', { textContent: title }), ...children);

export const note = (text) => element('p', { className: 'note', textContent: text });

export const toolbar = (buttons) => element('div', { className: 'toolbar' }, ...buttons);

/** A text that may be long. */
export const packet = (name, text) =>
    element('pre', { textContent: text, tabIndex: 0, role: 'region', 'aria-label': name });

export class Details {
    #place;
    #views;
    #shown; // what it showed last

    /**
     * @param {HTMLElement} place
     * @param {{none: () => Node[], one: (item) => Node[], some: (items) => Node[]}} views Items are replaced
     *     when something about them changes; buttons that stay the same elements keep the focus.
     */
    constructor(place, views) {
        this.#place = place;
        this.#views = views;
    }

    /** @param {object[]} items @param {boolean} [isAnew] Whether it is shown again though nothing changed. */
    show(items, isAnew = false) {
        const before = this.#shown;
        const isSame = items.length === before?.length && items.every((item, i) => item === before[i]);
        if (isSame && !isAnew) return;
        this.#shown = items;
        const focused = document.activeElement; // views move what stays
        const hadFocus = this.#place.contains(focused);
        const { none, one, some } = this.#views;
        const parts = items.length === 0 ? none() : items.length === 1 ? one(items[0]) : some(items);
        this.#place.replaceChildren(...parts.filter(Boolean));
        // What is gone leaves the focus to the place, not to the top of the page.
        if (hadFocus) (this.#place.contains(focused) ? focused : this.#place).focus();
        if (items[0]?.key !== before?.[0]?.key) this.#place.scrollTop = 0;
    }
}

// A text for a page, an element a line.

import { element } from '../kit/elements.js';
import { plural } from '../kit/format.js';
import { placeOf, print } from './printer.js';

export const mostText = 100000; // characters that are printed

/** A tag with its values set off. */
function* spansOf({ kind, text }) {
    if (!['begin', 'empty', 'end'].includes(kind)) {
        yield [kind, text];
        return;
    }
    for (const piece of text.split(/("[^"]*"|'[^']*')/))
        if (piece !== '') yield [/^["']/.test(piece) ? 'value' : 'markup', piece];
}

/** @returns {HTMLElement} A text, an element a line; what findings point at is marked. */
export function textView(text, findings) {
    const places = findings.map(({ line, column }) => placeOf(text, line, column));
    const isMarked = ({ at, text: { length } }) => places.some((place) => place >= at && place < at + length);
    const view = element('pre', { className: 'text', tabIndex: 0, role: 'region', 'aria-label': 'Text' });
    for (const { depth, parts } of print(text.slice(0, mostText))) {
        const line = element('span', { className: 'line' });
        line.style.setProperty('--depth', depth);
        for (const part of parts) {
            const spans = [...spansOf(part)].map(([className, textContent]) =>
                element('span', { className, textContent }),
            );
            line.append(...(isMarked(part) ? [element('mark', { tabIndex: -1 }, ...spans)] : spans));
        }
        view.append(line);
    }
    const rest = text.length - mostText;
    return element(
        'div',
        {},
        element('h3', { textContent: 'Text' }),
        view,
        rest > 0 &&
            element('p', {
                className: 'note',
                textContent: `${plural(rest, 'character')} more are not shown: save the entry for all.`,
            }),
    );
}

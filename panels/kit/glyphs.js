// Small drawings, each beside a text that says the same.

import { clipTypes } from './words.js';

const space = 'http://www.w3.org/2000/svg';

/** Paths in a box of 16. */
const paths = {
    [clipTypes.masterClip]: 'M2 3h12v10H2zM4 3v10M12 3v10M2 6h2M2 10h2M12 6h2M12 10h2',
    [clipTypes.subClip]: 'M2 3h12v10H2zM6 3v10M10 3v10',
    [clipTypes.roughCut]: 'M1 4h6v8H1zM9 4h6v8H9zM7 8h2',
    [clipTypes.rcSubClip]: 'M1 4h6v8H1zM9 4h6v8H9z',
};

/** @returns {SVGElement} The drawing of a type of clip. */
export function glyph(type) {
    const svg = document.createElementNS(space, 'svg');
    for (const [name, value] of [
        ['viewBox', '0 0 16 16'],
        ['class', 'glyph'],
        ['aria-hidden', 'true'],
    ])
        svg.setAttribute(name, value);
    const path = document.createElementNS(space, 'path');
    path.setAttribute('d', paths[type] ?? paths[clipTypes.masterClip]);
    svg.append(path);
    return svg;
}

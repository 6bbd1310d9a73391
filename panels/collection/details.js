// What is known of the selected assets.

import { Details, list, note, packet, section } from '../kit/details.js';
import { element } from '../kit/elements.js';
import { plural, rateText, timecode } from '../kit/format.js';
import { glyph } from '../kit/glyphs.js';
import { typeNames } from '../kit/media.js';

const lines = [
    ['Kind', ({ type, format }) => [typeNames[type], format].filter(Boolean).join(', ')],
    ['File', ({ path }) => path],
    ['Bin', ({ bin }) => bin],
    ['Begins at', ({ start, rate }) => timecode(start, rate)],
    ['Duration', ({ length, rate }) => timecode(length, rate)],
    ['Frame rate', ({ rate }) => rateText(rate)],
    ['Created', ({ created }) => created],
    ['Modified', ({ modified }) => modified],
    ['Holds', ({ children }) => (children.length > 0 ? plural(children.length, 'asset') : '')],
    ['Further files', ({ extraPaths }) => extraPaths.join('\n')],
    ['Copies', ({ copies }) => copies.join('\n')],
];

const one = (columns, rateOf) => (node) => {
    const rate = rateOf(node);
    const fields = columns.all.map(({ id, name }) => [name, columns.valueOf(node.id, id) || '–']);
    return [
        element('h2', {}, glyph(node.type), ` ${node.name}`),
        node.problem && element('p', { className: 'error', textContent: node.problem }),
        section('Properties', list(lines.map(([name, of]) => [name, of({ ...node, rate })]))),
        fields.length > 0 &&
            section('Columns', list(fields), note('What other pages filled in is not told to this one.')),
        node.metadata.length > 0 && section('Given on ingest', list(node.metadata)),
        section(
            'XMP',
            node.xmp ? packet('XMP', node.xmp) : note('Not read yet. Read it of the project or from disk.'),
        ),
        node.content && section('Content', packet('Content', node.content)),
    ];
};

export const makeDetails = (place, columns, rateOf) =>
    new Details(place, {
        none: () => [
            element('h2', { textContent: 'Details' }),
            note('Select an asset to see what is known of it. Enter fills in its columns.'),
        ],
        one: one(columns, rateOf),
        some: (nodes) => [
            element('h2', { textContent: `${plural(nodes.length, 'asset')} selected` }),
            note('Actions above are for all of them.'),
        ],
    });

// What is known of the selected clips.

import { Details, list, note, packet, section, toolbar } from '../kit/details.js';
import { element } from '../kit/elements.js';
import { duration, pathFolder, plural, rateText, timecode } from '../kit/format.js';
import { glyph } from '../kit/glyphs.js';
import { typeNames } from '../kit/media.js';
import { adviceOf } from './clips.js';

const lines = [
    ['Kind', ({ type, format }) => [typeNames[type], format].filter(Boolean).join(', ')],
    ['Folder', ({ path }) => pathFolder(path)],
    ['File', ({ path }) => path.slice(pathFolder(path).length + 1)],
    ['Bin', ({ bin }) => bin],
    ['Duration', ({ length, rate }) => timecode(length, rate)],
    ['Starts at', ({ start, rate }) => timecode(start, rate)],
    ['Frame rate', ({ rate }) => rateText(rate)],
    ['Created', ({ created }) => created],
    ['Modified', ({ modified }) => modified],
    ['Made from', ({ madeFrom }) => madeFrom],
    ['Further files', ({ extraPaths }) => extraPaths.join('\n')],
    ['Copies', ({ copies }) => copies.join('\n')],
];

function some(clips) {
    const known = clips.filter(({ length }) => length !== undefined);
    const total = known.reduce((sum, { length }) => sum + length, 0n);
    const rates = new Set(known.map(({ rate }) => rate));
    const failed = clips.filter(({ problem }) => problem !== undefined).length;
    return [
        element('h2', { textContent: `${plural(clips.length, 'clip')} selected` }),
        list([
            [
                'Duration',
                known.length > 0 ? duration(total, rates.size === 1 ? known[0].rate : undefined) : '',
            ],
            ['Failed', failed > 0 ? plural(failed, 'clip') : ''],
        ]),
        note('Actions above are for all of them.'),
    ];
}

const one = (buttons) => (clip) => {
    const advice = adviceOf(clip);
    const tone = clip.problem !== undefined || clip.isUnreachable ? 'error' : 'warn';
    const { thumbnail, metadata } = clip;
    return [
        element('h2', {}, glyph(clip.type), ` ${clip.name}`),
        advice && element('p', { className: tone, textContent: advice }),
        section('Properties', list(lines.map(([name, of]) => [name, of(clip)])), toolbar(buttons.properties)),
        metadata.length > 0 && section('Given on ingest', list(metadata)),
        section(
            'Thumbnail',
            thumbnail
                ? list([['Picture', thumbnail]])
                : note('None was made. The host tells where it keeps the picture.'),
            toolbar(buttons.thumbnail),
        ),
        section('XMP', clip.xmp ? packet('XMP', clip.xmp) : note('Not read yet.'), toolbar(buttons.xmp)),
    ];
};

/** @param {{properties, xmp, thumbnail}} buttons Arrays of buttons. */
export const makeDetails = (place, buttons) =>
    new Details(place, {
        none: () => [
            element('h2', { textContent: 'Details' }),
            note('Select a clip to see what is known of it.'),
        ],
        one: one(buttons),
        some,
    });

// What is known of the selected clips.

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

function list(pairs) {
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

const section = (title, ...children) =>
    element('section', {}, element('h3', { textContent: title }), ...children);

const note = (text) => element('p', { className: 'note', textContent: text });

/** Buttons of the details stay the same elements, so that the focus stays on them. */
export class Details {
    #place;
    #buttons;
    #shown = []; // what it showed last

    /** @param {{properties, xmp, thumbnail}} buttons Arrays of buttons. */
    constructor(place, buttons) {
        this.#place = place;
        this.#buttons = buttons;
    }

    show(clips) {
        const isSame =
            clips.length === this.#shown.length && clips.every((clip, i) => clip === this.#shown[i]);
        if (isSame && this.#place.hasChildNodes()) return;
        if (clips[0]?.path !== this.#shown[0]?.path) this.#place.scrollTop = 0;
        this.#shown = clips;
        const focused = document.activeElement;
        this.#place.replaceChildren(...(clips.length === 1 ? this.#one(clips[0]) : this.#many(clips)));
        if (this.#place.contains(focused)) focused.focus();
    }

    #many(clips) {
        if (clips.length === 0)
            return [
                element('h2', { textContent: 'Details' }),
                note('Select a clip to see what is known of it.'),
            ];
        const known = clips.filter(({ length }) => length !== undefined);
        const total = known.reduce((sum, { length }) => sum + length, 0n);
        const rates = new Set(known.map(({ rate }) => rate));
        const failed = clips.filter(({ problem }) => problem !== undefined).length;
        return [
            element('h2', { textContent: `${plural(clips.length, 'clip')} selected` }),
            list([
                ['Duration', duration(total, rates.size === 1 ? known[0].rate : undefined)],
                ['Failed', failed > 0 ? plural(failed, 'clip') : ''],
            ]),
            note('Actions above are for all of them.'),
        ];
    }

    #one(clip) {
        const advice = adviceOf(clip);
        const { thumbnail, xmp, metadata } = clip;
        const tone = clip.problem !== undefined || clip.isUnreachable ? 'error' : 'warn';
        return [
            element('h2', {}, glyph(clip.type), ` ${clip.name}`),
            advice && element('p', { className: tone, textContent: advice }),
            section(
                'Properties',
                list(lines.map(([name, of]) => [name, of(clip)])),
                element('div', { className: 'toolbar' }, ...this.#buttons.properties),
            ),
            metadata.length > 0 && section('Given on ingest', list(metadata)),
            section(
                'Thumbnail',
                thumbnail
                    ? list([['Picture', thumbnail]])
                    : note('None was made. The host tells where it keeps the picture.'),
                element('div', { className: 'toolbar' }, ...this.#buttons.thumbnail),
            ),
            section(
                'XMP',
                xmp
                    ? element('pre', { textContent: xmp, tabIndex: 0, role: 'region', 'aria-label': 'XMP' })
                    : note('Not read yet.'),
                element('div', { className: 'toolbar' }, ...this.#buttons.xmp),
            ),
        ].filter(Boolean);
    }
}

// The ingest dialog: what the user chose is told as callbacks.

import { newGuid, rateOf } from '../client/index.js';
import { element, setText } from '../kit/elements.js';
import { plural } from '../kit/format.js';
import { argumentsOf } from './examples.js';
import { byID, option, tell } from './forms.js';

const rates = {
    23.976: [24000, 1001],
    24: [24],
    25: [25],
    29.97: [30000, 1001],
    30: [30],
    50: [50],
    59.94: [60000, 1001],
    60: [60],
};
const told = byID('ingest-told');
const items = byID('ingest-items');
let shown; // the number of the entry that opened the dialog
let count = 0;
let isTyped = false; // whether the person has begun to say what is ingested
let answered; // the number of the entry whose dialog was ended here

/** What a clip is given by: name of the value, label, type of the control, what stands there first. */
const fields = [
    [
        'filePath',
        'Path',
        'text',
        (i, bin) => `/media/${bin.toLowerCase().replace(/[^a-z0-9]+/g, '-') || 'clips'}/clip-${i}.mov`,
    ],
    ['aliasName', 'Name', 'text', (i) => `Clip ${i}`],
    ['clipFormat', 'Format', 'text', () => 'MOV'],
    ['seconds', 'Seconds', 'number', (i) => 8 + 4 * i],
];

function addClip(bin) {
    const i = ++count;
    const field = (label, control) => {
        control.id = `clip-${i}-${control.name}`;
        return element(
            'div',
            { className: 'field' },
            element('label', { htmlFor: control.id, textContent: label }),
            control,
        );
    };
    const rate = element(
        'select',
        { name: 'rate' },
        ...Object.keys(rates)
            .sort((a, b) => a - b)
            .map((fps) => option(fps, fps)),
    );
    rate.value = '25';
    const clip = element(
        'div',
        { className: 'clip', role: 'group', 'aria-label': `Clip ${i}` },
        ...fields.map(([name, label, type, first]) =>
            field(
                label,
                element('input', {
                    name,
                    type,
                    value: String(first(i, bin)),
                    autocomplete: 'off',
                    ...(type === 'number' && { min: '0', step: 'any' }),
                }),
            ),
        ),
        field('Frames/s', rate),
        element('button', {
            type: 'button',
            className: 'quiet',
            textContent: 'Remove',
            'aria-label': `Remove clip ${i}`,
            onclick: () => {
                clip.remove();
                byID('ingest-add').focus();
            },
        }),
    );
    items.append(clip);
    return clip;
}

const givenIn = (clip) =>
    Object.fromEntries([...clip.querySelectorAll('input, select')].map(({ name, value }) => [name, value]));

/** @returns {[string, string] | undefined} The value that is none, and what to do. */
function faultOf({ filePath, seconds }) {
    if (filePath.trim() === '') return ['filePath', 'A clip needs a path.'];
    return Number(seconds) > 0 && Number(seconds) <= 1e6
        ? undefined
        : ['seconds', 'A clip is longer than nothing: write its seconds as a number, such as 12.5.'];
}

function itemOf(given) {
    const frameRate = rateOf(...rates[given.rate]);
    const seconds = Number(given.seconds);
    const [frames, per = 1] = rates[given.rate];
    const length = BigInt(Math.max(1, Math.round((seconds * frames) / per)));
    const { filePath, aliasName, clipFormat } = given;
    return { filePath, aliasName, clipFormat, startTime: 0, endTime: length * frameRate, frameRate };
}

/** @returns {[string, object][]} Callbacks in their order, with the arguments that the dialog settles. */
function callsFor(clips, bin) {
    const keywords = byID('ingest-keywords')
        .value.split(',')
        .map((word) => word.trim())
        .filter(Boolean);
    const values = {
        task: newGuid(),
        batch: newGuid(),
        'task item': newGuid(),
        items: clips,
        'target bin': bin,
        metadata: keywords.length === 0 ? {} : { minimumMetadata: { keywords } },
    };
    return [
        'OnIngestStarted',
        'OnIngestBatchStarted',
        'OnIngestItemsReady',
        'OnIngestBatchFinished',
        'OnIngestFinished',
    ].map((callback) => [callback, values]);
}

/** Ends the dialog, once, also when it is pressed twice. */
async function make(desk, calls, done) {
    if (answered === shown) return;
    answered = shown;
    let callback;
    try {
        for (const [name, values] of calls) {
            callback = name;
            await desk.do('callback', { callback, args: argumentsOf(callback, values) });
        }
        tell(told, done);
    } catch (error) {
        tell(told, `The ingest stopped at ${callback}: ${error.message}`, false);
        answered = undefined;
    }
}

function ingest(desk, bin) {
    const clips = [...items.children];
    const wrong = clips.find((clip) => faultOf(givenIn(clip)) !== undefined);
    for (const control of items.querySelectorAll('input')) control.setAttribute('aria-invalid', 'false');
    if (clips.length === 0) return tell(told, 'Add a clip first: an ingest without one tells nobody.', false);
    if (wrong !== undefined) {
        const [name, what] = faultOf(givenIn(wrong));
        const control = wrong.querySelector(`[name=${name}]`);
        tell(told, what, false);
        control.setAttribute('aria-invalid', 'true');
        return control.focus();
    }
    const done = `Ingested ${plural(clips.length, 'clip')} into ${bin || 'no bin'}.`;
    make(desk, callsFor(clips.map(givenIn).map(itemOf), bin), done);
}

/** Shows the dialog that is open, or none. One that is asked for again keeps what was typed. */
export function showDialog(dialog) {
    if (dialog?.number === shown) return;
    const section = byID('ingest');
    const hadFocus = section.contains(document.activeElement);
    const wasOpen = shown !== undefined;
    shown = dialog?.number;
    section.hidden = dialog === undefined;
    if (dialog === undefined) {
        if (hadFocus) byID('tasks-title').focus();
        return;
    }
    const bin = dialog.bin === '' ? 'no bin' : `the bin “${dialog.bin}”`;
    const text = `${dialog.by ?? 'A panel'} asks for the ingest dialog, for ${bin}. It is open.`;
    setText(byID('ingest-text'), text);
    if (wasOpen && isTyped) return;
    isTyped = false;
    count = 0;
    items.replaceChildren();
    addClip(dialog.bin);
    addClip(dialog.bin);
    tell(told, '');
    if (hadFocus) byID('ingest-title').focus();
}

export function beginIngest(deskOf, watch) {
    const withDesk = (act) => {
        const { dialog } = watch;
        if (deskOf() === undefined)
            tell(told, 'There is no connection to the desk: see the top of the page.', false);
        else if (dialog !== undefined) act(deskOf(), dialog);
    };
    byID('ingest-add').addEventListener('click', () =>
        addClip(watch.dialog?.bin ?? '')
            .querySelector('input')
            .focus(),
    );
    byID('ingest-form').addEventListener('input', () => {
        isTyped = true;
    });
    byID('ingest-form').addEventListener('submit', (event) => {
        event.preventDefault();
        withDesk((desk, { bin }) => ingest(desk, bin));
    });
    byID('ingest-cancel').addEventListener('click', () =>
        withDesk((desk, { task }) =>
            make(desk, [['OnIngestCancelled', { task }]], 'The ingest was cancelled.'),
        ),
    );
}

// The library panel: the clips, what is known of them, and what can be done with them.

import '../kit/grid.js';
import { Actions, noConnection } from '../kit/actions.js';
import { element } from '../kit/elements.js';
import { ExitGuard } from '../kit/exit-guard.js';
import { duration, pathEnd, plural, ticksOf } from '../kit/format.js';
import { glyph } from '../kit/glyphs.js';
import { typeNames } from '../kit/media.js';
import { problemsOf } from '../kit/outcome.js';
import { PanelPage } from '../kit/panel-page.js';
import { soon } from '../kit/soon.js';
import { ClipList, adviceOf, listed, stateOf } from './clips.js';
import { makeDetails } from './details.js';
import * as questions from './questions.js';
import * as requests from './requests.js';

const clips = new ClipList();
const grid = document.getElementById('clips');
const search = document.getElementById('search');
const order = { key: '', descending: false };

const page = new PanelPage('library', {
    changed: () => showSoon(),
    news: (name, message) => {
        if (name === 'AppExit') guard.asked();
        if (clips.hear(name, message)) showSoon();
    },
    state: ({ exit }) => guard.heardState(exit),
    unknown: 'This host does not list its tasks: those begun by other pages are not known here.',
});
const guard = new ExitGuard(page);
const showSoon = soon(() => show());

let chosen = []; // the clips that an action is about, in the order of the list

const needsOne = () => (chosen.length === 1 ? undefined : 'Select one clip.');
const needsSome = () => (chosen.length > 0 ? undefined : 'Select one clip or more.');
const needsTwo = () => (chosen.length > 1 ? undefined : 'Select two clips or more.');
const needsIdle = (what) => () => needsOne() ?? page.busyWith(what, chosen);
const needsXmp = () => needsOne() ?? (chosen[0].xmp ? undefined : 'Read the XMP first.');

const titleFor = (work, some) =>
    `${work} – ${some.length === 1 ? some[0].name : plural(some.length, 'clip')}`;

/**
 * Raises a request for clips. What fails is told at the clip that it is about.
 * @returns {Promise<object | undefined>} The answer, where there is one.
 */
async function run(what, content, work, some, how = {}) {
    const paths = some.map(({ path }) => path);
    for (const path of paths) clips.note(path, undefined);
    const outcome = await page.run(what, content, { title: titleFor(work, some), paths, ...how });
    for (const [path, problem] of problemsOf(work, paths, outcome)) clips.note(path, problem);
    show();
    return outcome.answer;
}

async function ingest() {
    const values = await questions.ingest();
    if (values === null) return;
    const title = values.bin === '' ? 'Open ingest dialog' : `Open ingest dialog – ${values.bin}`;
    await page.run('OpenIngestDialog', { targetBin: values.bin }, { title });
}

async function importXmp() {
    const [clip] = chosen;
    const answer = await run('ImportXMP', requests.importXmp(clip), 'Read XMP', [clip]);
    if (answer) hearXmp('ImportXMP', answer);
}

async function readXmp() {
    const [clip] = chosen;
    const answer = await run('ReadXMPFromDisk', requests.readXmp(clip), 'Read XMP from disk', [clip]);
    if (answer) hearXmp('ReadXMPFromDisk', answer);
}

function hearXmp(what, answer) {
    clips.heardXmp(what, answer);
    show();
}

async function writeXmp() {
    const [clip] = chosen;
    const values = await questions.writeXmp(clip);
    if (values !== null)
        await run('WriteXMPToDisk', requests.writeXmp(clip, values.xmp), 'Write XMP', [clip], {
            isSilent: true,
        });
}

async function getProperties() {
    const [clip] = chosen;
    const answer = await run('GetMediaPropertyInfo', requests.properties(clip), 'Properties', [clip]);
    if (answer) clips.propertiesCame(answer);
    show();
}

async function thumbnail() {
    const [clip] = chosen;
    const values = await questions.thumbnail(clip);
    if (values === null) return;
    const content = requests.thumbnail(clip, ticksOf(values.at, clip.rate));
    const answer = await run('RequestThumbnail', content, 'Thumbnail', [clip]);
    if (answer) clips.thumbnailCame(answer);
    show();
}

async function rename() {
    const [clip] = chosen;
    const values = await questions.rename(clip);
    if (values === null) return;
    const answer = await run('RenameRequest', requests.rename(clip, values.name), 'Rename', [clip]);
    if (answer) clips.renamed(answer);
    show();
    const renamed = answer?.transferResultList?.find(({ src }) => src === clip.path)?.dst;
    if (renamed && clips.get(renamed)) grid.selection = [renamed];
}

async function transcode() {
    const some = chosen;
    const values = await questions.transcode(some);
    if (values === null) return;
    const content = requests.transcode(some, values);
    made(await run('TranscodeRequest', content, 'Transcode', some, { isLong: true }), some);
}

async function concatenate() {
    const some = chosen;
    const values = await questions.concatenate(some);
    if (values === null) return;
    const content = requests.concatenate(some, values);
    made(await run('ConcatenationRequest', content, 'Concatenate', some, { isLong: true }), some);
}

function made(answer, [clip]) {
    if (answer?.outputFilePath) clips.made(answer.outputFilePath, { from: clip.path });
    show();
}

async function transfer() {
    const some = chosen;
    const values = await questions.transfer(some);
    if (values !== null)
        await run('TransferRequest', requests.transfer(some, values), 'Transfer', some, { isLong: true });
}

const tools = [
    new Actions([{ label: 'Ingest …', className: 'primary', run: ingest }]),
    new Actions([
        { label: 'Rename …', run: rename, prevented: needsOne },
        { label: 'Transcode …', run: transcode, prevented: needsSome },
        { label: 'Transfer …', run: transfer, prevented: needsSome },
        { label: 'Concatenate …', run: concatenate, prevented: needsTwo },
    ]),
];
const detailTools = {
    properties: new Actions([
        { label: 'Get properties', run: getProperties, prevented: needsIdle('GetMediaPropertyInfo') },
    ]),
    thumbnail: new Actions([{ label: 'Request thumbnail …', run: thumbnail, prevented: needsOne }]),
    xmp: new Actions([
        { label: 'Read XMP', run: importXmp, prevented: needsIdle('ImportXMP') },
        { label: 'Read from disk', run: readXmp, prevented: needsIdle('ReadXMPFromDisk') },
        { label: 'Write to disk …', run: writeXmp, prevented: needsXmp },
    ]),
};
const details = makeDetails(
    document.getElementById('details'),
    Object.fromEntries(Object.entries(detailTools).map(([name, actions]) => [name, actions.buttons])),
);

function showType({ type }, cell) {
    cell.append(glyph(type), element('span', { className: 'only-heard', textContent: typeNames[type] }));
}

function showState(clip, cell) {
    const task = page.tasks.at(clip.path);
    const { tone, text } = stateOf(clip, task);
    const advice = task === undefined ? adviceOf(clip) : '';
    cell.append(element('span', { className: tone, textContent: [text, advice].filter(Boolean).join(': ') }));
}

grid.columns = [
    { key: 'type', label: 'Kind', width: '9ch', sortable: true, cell: showType },
    { key: 'name', label: 'Name', width: '3fr', sortable: true },
    { key: 'state', label: 'State', width: '3fr', sortable: true, cell: showState },
    {
        key: 'length',
        label: 'Duration',
        width: '15ch',
        align: 'end',
        sortable: true,
        cell: ({ length, rate }, cell) => cell.append(duration(length, rate)),
    },
    {
        key: 'path',
        label: 'File',
        width: '2fr',
        sortable: true,
        cell: ({ path }, cell) => cell.append(pathEnd(path)),
    },
    { key: 'bin', label: 'Bin', width: '1fr', sortable: true },
];

function update() {
    const keys = grid.selection;
    chosen = grid.rows.filter(({ key }) => keys.has(key));
    const reason = page.isUsable ? undefined : noConnection;
    for (const actions of [...tools, ...Object.values(detailTools)]) actions.update(reason);
    guard.update();
    details.show(chosen);
}

function emptyText() {
    const searched = search.value.trim();
    if (searched !== '') return `No clip holds “${searched}”. Search for less, or clear the search.`;
    if (!page.isUsable) return 'No clips: there is no connection to the host. The line at the top says why.';
    return 'No clips yet. Choose Ingest to begin; clips show here as soon as the host has them.';
}

function show() {
    grid.emptyText = emptyText();
    grid.rows = listed(clips.all, { search: search.value, ...order });
    update();
}

document
    .getElementById('tools')
    .prepend(...tools.map(({ buttons }) => element('div', { className: 'toolbar' }, ...buttons)));
grid.addEventListener('select', update);
grid.addEventListener('open', () => document.getElementById('details').focus());
grid.addEventListener('sort', ({ detail }) => {
    Object.assign(order, detail);
    show();
});
search.addEventListener('input', show);
show();
page.begin();

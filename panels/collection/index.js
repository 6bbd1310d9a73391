// The media collection panel: the assets as a tree, the columns that people add, and what can be done with
// them.

import '../kit/grid.js';
import { newGuid } from '../client/guid.js';
import { Actions, noConnection } from '../kit/actions.js';
import { element } from '../kit/elements.js';
import { duration, plural } from '../kit/format.js';
import { glyph } from '../kit/glyphs.js';
import { isOfRoughCut, typeNames } from '../kit/media.js';
import { failureText, problemsOf } from '../kit/outcome.js';
import { PanelPage } from '../kit/panel-page.js';
import { soon } from '../kit/soon.js';
import { progressText } from '../kit/tasks.js';
import { AssetTree } from './assets.js';
import { Columns } from './columns.js';
import { makeDetails } from './details.js';
import * as questions from './questions.js';
import * as requests from './requests.js';

const tree = new AssetTree();
const columns = new Columns();
const grid = document.getElementById('assets');
const search = document.getElementById('search');
const shut = new Set(); // keys
const order = { key: '', descending: false };

const page = new PanelPage('mediaCollection', {
    changed: () => showSoon(),
    news: (name, message) => {
        if (tree.hear(name, message)) showSoon();
    },
    state: (state) => {
        if (Array.isArray(state.columns) && columns.heardState(state.columns)) showColumns();
    },
    unknown: 'This host lists neither tasks nor columns: what other pages did is not known here.',
});
const showSoon = soon(() => show());

let chosen = []; // the assets that an action is about, in the order of the tree

const needsOne = () => (chosen.length === 1 ? undefined : 'Select one asset.');
const needsSome = () => (chosen.length > 0 ? undefined : 'Select one asset or more.');
const needsIdle = (what, needs) => () => needs() ?? page.busyWith(what, chosen);
const needsColumn = () => (columns.all.length > 0 ? undefined : 'Add a column first.');
const needsBoth = () => needsOne() ?? needsColumn();

const titleFor = (work, some) =>
    `${work} – ${some.length === 1 ? some[0].name : plural(some.length, 'asset')}`;

/** Raises a request for assets. What fails is told at the asset that it is about. */
async function run(what, content, work, some, how = {}) {
    for (const { key } of some) tree.failed(key, undefined);
    const paths = some.map(({ path }) => path);
    const outcome = await page.run(what, content, { title: titleFor(work, some), paths, ...how });
    const problems = problemsOf(work, paths, outcome);
    for (const { key, path } of some) if (problems.has(path)) tree.failed(key, problems.get(path));
    show();
    return outcome;
}

let notIngested = ''; // paths to correct

async function ingest() {
    const values = await questions.ingest(notIngested);
    if (values === null) return;
    notIngested = '';
    const count = requests.linesOf(values.paths).length;
    const { status, items } = await page.run('IngestMedia', requests.ingest(values), {
        title: `Ingest – ${plural(count, 'file')}`,
        isLong: true,
    });
    if (status !== 'done' || items.length > 0) notIngested = values.paths;
}

/** Why XMP was not read; rough cuts are the usual reason. */
const xmpFailure = (what, node) =>
    isOfRoughCut(node)
        ? `${typeNames[node.type]}: it carries no XMP of its own. Read that of the clip.`
        : failureText(what);

/** What was asked for and is not in the answer could not be read. */
const judgeXmp =
    (some) =>
    (what, { assetMediaInfoList = [] }) => {
        const read = new Set(assetMediaInfoList.map(({ mediaPath }) => mediaPath));
        const unread = some.filter(({ path }) => !read.has(path));
        const items = unread.map((node) => ({ path: node.path, text: xmpFailure(what, node) }));
        return { status: items.length > 0 ? 'failed' : 'done', detail: '', items };
    };

async function readXmp(what, work, some) {
    const { answer } = await run(what, requests.readXmp(some), work, some, { judge: judgeXmp(some) });
    if (answer) tree.xmpCame(answer);
    show();
}

async function save() {
    const some = chosen;
    const content = requests.save(some, (key) => tree.get(key));
    await run('TriggerSaveAsset', content, 'Save', some, { isLong: true });
}

async function exportSome() {
    const some = chosen;
    const content = requests.exportAssets(some, (key) => tree.get(key));
    await run('ExportAsset', content, 'Export', some, { isSilent: true });
}

async function addColumn() {
    const values = await questions.addColumn(columns);
    if (values === null) return;
    const id = newGuid();
    putColumn(id, values.name.trim(), requests.insertColumn(id, values.name.trim()), 'Add column');
}

async function renameColumn() {
    const values = await questions.renameColumn(columns);
    if (values === null) return;
    const [name, before] = [values.name.trim(), columns.nameOf(values.id)];
    putColumn(values.id, name, requests.insertColumn(values.id, name, before), 'Rename column');
}

function putColumn(id, name, content, work) {
    columns.put(id, name);
    showColumns();
    page.send('InsertDynamicColumns', content, `${work} – ${name}`);
}

async function deleteColumn() {
    const values = await questions.deleteColumn(columns);
    if (values === null) return;
    const name = columns.nameOf(values.id);
    columns.remove(values.id);
    showColumns();
    page.send('DeleteDynamicColumns', requests.deleteColumn(values.id), `Delete column – ${name}`);
}

async function fillIn() {
    const [node] = chosen;
    const values = await questions.fillIn(node, columns);
    if (values === null) return;
    const changed = Object.entries(values).filter(([id, value]) => value !== columns.valueOf(node.id, id));
    if (changed.length === 0) return;
    columns.fill(node.id, changed);
    show(true);
    page.send('UpdateDynamicColumnFields', requests.fillFields(node.id, changed), `Fill in – ${node.name}`);
}

async function report() {
    const values = await questions.report();
    if (values !== null) page.send('ReportEvent', requests.report(values), 'Report');
}

const groups = [
    ['', [{ label: 'Ingest files …', className: 'primary', run: ingest }]],
    [
        'Assets',
        [
            {
                label: 'Read XMP of project',
                prevented: needsIdle('ReadXMPFromCache', needsOne),
                run: () => readXmp('ReadXMPFromCache', 'Read XMP of the project', chosen),
            },
            {
                label: 'Read XMP from disk',
                prevented: needsIdle('ReadXMPFromDisk', needsSome),
                run: () => readXmp('ReadXMPFromDisk', 'Read XMP from disk', chosen),
            },
            { label: 'Save', run: save, prevented: needsIdle('TriggerSaveAsset', needsSome) },
            { label: 'Export', run: exportSome, prevented: needsIdle('ExportAsset', needsSome) },
            { label: 'Fill in …', run: fillIn, prevented: needsBoth },
        ],
    ],
    [
        'Columns',
        [
            { label: 'Add column …', run: addColumn },
            { label: 'Rename column …', run: renameColumn, prevented: needsColumn },
            { label: 'Delete column …', run: deleteColumn, prevented: needsColumn },
        ],
    ],
    ['', [{ label: 'Report …', run: report }]],
].map(([name, actions]) => ({ name, actions: new Actions(actions) }));

const details = makeDetails(document.getElementById('details'), columns, (node) => tree.rateOf(node));

function showName({ node }, cell) {
    cell.append(
        glyph(node.type),
        element('span', { className: 'only-heard', textContent: `${typeNames[node.type]}: ` }),
        ` ${node.name}`,
    );
}

function showState({ node }, cell) {
    const task = page.tasks.at(node.path);
    if (task !== undefined) {
        cell.append(progressText(task));
    } else if (node.problem) cell.append(element('span', { className: 'bad', textContent: node.problem }));
    else cell.append(node.xmp ? 'XMP read' : 'Ready');
}

const fixedColumns = [
    { key: 'name', label: 'Name', width: '3fr', sortable: true, cell: showName },
    { key: 'state', label: 'State', width: '2fr', cell: showState },
    {
        key: 'length',
        label: 'Duration',
        width: '15ch',
        align: 'end',
        sortable: true,
        cell: ({ node }, cell) => cell.append(duration(node.length, tree.rateOf(node))),
    },
    {
        key: 'path',
        label: 'File',
        width: '2fr',
        sortable: true,
        cell: ({ node }, cell) => cell.append(node.path),
    },
];

const valuesToSort = {
    name: ({ name }) => name,
    length: ({ length }) => length ?? -1n,
    path: ({ path }) => path,
};

function showColumns() {
    const made = columns.all.map(({ id, name }) => ({
        key: id,
        label: name,
        width: '1fr',
        sortable: true,
        cell: ({ node }, cell) => cell.append(columns.valueOf(node.id, id)),
    }));
    grid.columns = [...fixedColumns, ...made];
    show(true);
}

const textOf = (node) =>
    [node.name, node.path, ...columns.all.map(({ id }) => columns.valueOf(node.id, id))].join('\n');

function update(isAnew) {
    const keys = grid.selection;
    chosen = grid.rows.filter(({ key }) => keys.has(key)).map(({ node }) => node);
    const reason = page.isUsable ? undefined : noConnection;
    for (const { actions } of groups) actions.update(reason);
    details.show(chosen, isAnew);
}

function emptyText() {
    const searched = search.value.trim();
    if (searched !== '') return `No asset holds “${searched}”. Search for less, or clear the search.`;
    if (!page.isUsable) return 'No assets: there is no connection to the host. The line at the top says why.';
    return 'No assets yet. Choose Ingest files to begin; what the host ingests or saves shows here.';
}

function show(isAnew = false) {
    const { key, descending } = order;
    const sortedBy = valuesToSort[key] ?? (columns.nameOf(key) && ((node) => columns.valueOf(node.id, key)));
    grid.emptyText = emptyText();
    grid.rows = tree.rows({
        isShut: (node) => shut.has(node),
        search: search.value,
        textOf,
        sortedBy,
        descending,
    });
    update(isAnew);
}

document
    .getElementById('tools')
    .prepend(
        ...groups.map(({ name, actions }) =>
            element(
                'div',
                { className: 'toolbar', role: name ? 'group' : null, 'aria-label': name || undefined },
                ...actions.buttons,
            ),
        ),
    );
grid.levelOf = ({ level }) => level;
grid.isExpanded = ({ expanded }) => expanded;
grid.addEventListener('expand', ({ detail: { row, expanded } }) => {
    if (expanded) shut.delete(row.key);
    else shut.add(row.key);
    show();
});
grid.addEventListener('select', () => update());
grid.addEventListener('open', () => {
    if (page.isUsable && needsBoth() === undefined) fillIn();
});
grid.addEventListener('sort', ({ detail }) => {
    Object.assign(order, detail);
    show();
});
search.addEventListener('input', () => show());
showColumns();
page.begin();

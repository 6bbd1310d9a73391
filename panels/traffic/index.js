// The traffic view: everything that panels, connectors and host say to each other, as it passes.

import '../kit/grid.js';
import { beginPage } from '../desk/page.js';
import { element, setText } from '../kit/elements.js';
import { plural } from '../kit/format.js';
import { soon } from '../kit/soon.js';
import { columnsFor } from './columns.js';
import { Details } from './details.js';
import { groups } from './lines.js';
import { TrafficLog, filterFor } from './log.js';

const pace = 200; // milliseconds between two pictures of the list
const byID = (id) => document.getElementById(id);
const list = byID('list');
const log = new TrafficLog();
const wanted = { hidden: new Set(), who: '', words: '', id: '', isRemarkable: false };
let matches = filterFor(wanted);
let shown = []; // the rows that match
let current; // the row in the pane
let relations = new Map(); // of other rows to it
let isPaused = false;
let meanwhile = 0; // entries since the pause
let isSaving = false;
let download;
let desk;

const details = new Details(log, {
    filter: setID,
    go,
    inspect: (number) => {
        if (desk === undefined) throw new Error('there is no connection to the desk');
        return desk.do('inspect', { number });
    },
});

function tell(text, className = 'done') {
    byID('told').className = text === '' ? '' : className;
    byID('told').replaceChildren(text);
}

const showSoon = soon(show, pace);

function show() {
    if (!isPaused) list.rows = shown.slice();
    showCounts();
    details.refresh();
}

function showCounts() {
    const parts = [plural(log.rows.length, 'entry', 'entries')];
    if (log.dropped > 0) parts.push(`${log.dropped.toLocaleString('en')} older ones were dropped here`);
    const selected = list.selection.size;
    if (selected > 0) parts.push(`${selected.toLocaleString('en')} selected`);
    if (isPaused) parts.push(`${plural(meanwhile, 'entry', 'entries')} since the pause`);
    setText(byID('count'), parts.join(', '));
    const isFiltered = shown.length !== log.rows.length;
    setText(byID('filtered'), isFiltered ? `${shown.length.toLocaleString('en')} shown` : '');
    list.emptyText =
        log.rows.length > 0
            ? 'Nothing matches the filters. Change them above.'
            : 'Nothing has passed yet. Open a panel, or make a callback on the host page.';
}

function hear(entries) {
    if (entries[0].number <= log.rows.at(-1)?.number) clear(); // another desk begins anew
    const dropped = log.dropped;
    const added = log.add(entries);
    if (log.dropped > dropped) shown = shown.filter(({ number }) => log.find(number) !== undefined);
    shown.push(...added.filter((row) => log.find(row.number) !== undefined && matches(row)));
    if (isPaused) meanwhile += entries.length;
    if (current !== undefined && added.some(({ cause, ids }) => cause === current.number || ids.length > 0))
        relations = log.relations(current);
    for (const row of added) addWho(row);
    showSoon();
}

const known = new Set(['']);

function addWho({ from, to, asker }) {
    for (const name of [from, to, asker]) {
        if (name === undefined || known.has(name) || known.size > 100) continue;
        known.add(name);
        byID('who').append(element('option', { value: name, textContent: name }));
    }
}

function refilter() {
    matches = filterFor(wanted);
    shown = log.rows.filter(matches);
    const before = isPaused ? log.rows.at(-meanwhile)?.number : undefined;
    list.rows = meanwhile > 0 && isPaused ? shown.filter(({ number }) => number < before) : shown.slice();
    showCounts();
}

function setID(id) {
    wanted.id = id;
    byID('id').hidden = id === '';
    byID('id').textContent = `Only id ${id} ×`;
    byID('id').setAttribute('aria-label', `Only id ${id}: show the others again`);
    refilter();
}

function go(number) {
    const row = log.find(number);
    if (row === undefined) return tell(`Entry ${number} is not kept any more.`, 'error');
    if (!shown.includes(row)) return choose(row);
    list.selection = new Set([String(number)]);
    list.focus(String(number));
}

function choose(row) {
    current = row;
    relations = row === undefined ? new Map() : log.relations(row);
    details.show(row);
    list.rows = list.rows.slice(); // classes of rows follow the one that is chosen
}

function selectionChanged() {
    const [only, ...more] = list.selection;
    if (only !== undefined && more.length === 0) {
        const row = log.find(Number(only));
        if (row !== current && row !== undefined) choose(row);
    }
    showCounts();
}

function pause() {
    isPaused = !isPaused;
    meanwhile = 0;
    byID('pause').setAttribute('aria-pressed', String(isPaused));
    byID('pause').textContent = isPaused ? 'Resume' : 'Pause';
    show();
}

function clear() {
    log.clear();
    shown = [];
    meanwhile = 0;
    list.rows = [];
    choose(undefined);
    setText(byID('gap'), '');
    tell('');
    showCounts();
}

async function save() {
    const numbers = log.inputsOf([...list.selection].map(Number));
    if (desk === undefined)
        return tell('There is no connection to the desk: see the top of the page.', 'error');
    if (numbers.length === 0)
        return tell(
            'Nothing to save: select entries first. Notes, and what the host itself told, are in no session.',
            'error',
        );
    if (isSaving) return;
    isSaving = true;
    tell('Saving: the selection is played to see whether it stands alone …');
    try {
        const { text, standsAlone, why } = await desk.do('save', { numbers });
        offer(text, numbers);
        const what = `Saved ${plural(numbers.length, 'input')} with their effects. `;
        const verdict = standsAlone
            ? 'The file stands alone: replay --check finds no difference. '
            : `The file does not stand alone: ${why}. `;
        tell(what + verdict, standsAlone ? 'done' : 'error');
        byID('told').append(download);
    } catch (error) {
        tell(`The selection is not saved: ${error.message}`, 'error');
    }
    isSaving = false;
}

function offer(text, numbers) {
    if (download !== undefined) URL.revokeObjectURL(download.href);
    const name = `session-${numbers[0]}-${numbers.at(-1)}.jsonl`;
    download = element('a', {
        href: URL.createObjectURL(new Blob([text])),
        download: name,
        textContent: `Download ${name} again`,
    });
    download.click();
}

function layOut({ matches: isNarrow }) {
    list.columns = columnsFor(isNarrow, (row) => relations.get(row.number));
    byID('filters').open = !isNarrow;
}

list.keyOf = ({ number }) => String(number);
list.rowClass = (row) => `${relations.has(row.number) ? 'is-related' : ''} ${row.isInput ? '' : 'is-effect'}`;
list.followEnd = true;
list.addEventListener('select', selectionChanged);
list.addEventListener('open', () => byID('details').focus());
byID('details').addEventListener('keydown', ({ key }) => key === 'Escape' && list.focus());

byID('groups').append(
    ...Object.entries(groups).map(([group, label]) => {
        const change = ({ target }) => {
            if (target.checked) wanted.hidden.delete(group);
            else wanted.hidden.add(group);
            refilter();
        };
        return element(
            'label',
            { className: 'tick' },
            element('input', { type: 'checkbox', checked: true, onchange: change }),
            label,
        );
    }),
);
byID('remarkable').addEventListener('change', ({ target }) => {
    wanted.isRemarkable = target.checked;
    refilter();
});
byID('who').addEventListener('change', ({ target }) => {
    wanted.who = target.value;
    refilter();
});
let typing;
byID('words').addEventListener('input', ({ target }) => {
    clearTimeout(typing);
    typing = setTimeout(() => {
        wanted.words = target.value.trim();
        refilter();
    }, 150);
});
byID('id').addEventListener('click', () => {
    setID('');
    list.focus();
});
byID('pause').addEventListener('click', pause);
byID('clear').addEventListener('click', clear);
byID('save').addEventListener('click', save);

const narrow = matchMedia('(max-width: 60rem)');
narrow.addEventListener('change', layOut);
layOut(narrow);
show();

desk = await beginPage({ traffic: hear, gap: (text) => setText(byID('gap'), text) });

// What pages share and Node can try: values as people read them, the grid's rows, the tasks.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { rateOf, ticksPerSecond } from '../../panels/client/index.js';
import { rateText, ticksOf, timecode } from '../../panels/kit/format.js';
import { GridModel, rowsInView } from '../../panels/kit/grid-model.js';
import { finderOf, inOrder } from '../../panels/kit/lists.js';
import { outcomeOf, outcomeOfError } from '../../panels/kit/outcome.js';
import { nameProblem, pathProblem, withoutEnding } from '../../panels/kit/paths.js';
import { TaskList } from '../../panels/kit/tasks.js';

test('times are read as they are written, at each rate', () => {
    const ntsc = rateOf(30000, 1001);
    for (const [ticks, rate, text] of [
        [0n, rateOf(25), '00:00:00:00'],
        [ticksPerSecond * 3600n - rateOf(25), rateOf(25), '00:59:59:24'],
        [ntsc * 30n, ntsc, '00:00:01:00'],
        [ntsc * 107892n, ntsc, '00:59:56:12'],
        [rateOf(24000, 1001) * 24n, rateOf(24000, 1001), '00:00:01:00'],
        [ticksPerSecond * 360000n, rateOf(25), '100:00:00:00'],
        [(ticksPerSecond * 5n) / 2n, undefined, '00:00:02.500'],
        [ticksPerSecond * 60n, rateOf(25, 2), '00:01:00.000'],
        [ticksPerSecond * 60n, ticksPerSecond * 2n, '00:01:00.000'],
        [ticksPerSecond, 1n, '00:00:01.000'],
        [ticksPerSecond, 0n, '00:00:01.000'],
    ]) {
        assert.equal(timecode(ticks, rate), text);
        assert.equal(ticksOf(text, rate), ticks);
    }
    assert.equal(timecode(-rateOf(25), rateOf(25)), '-00:00:00:01');
    assert.equal(ticksOf('1:30'), 90n * ticksPerSecond);
    assert.deepEqual([rateOf(25), ntsc, rateOf(24000, 1001), rateOf(25, 2), 1n, 0n].map(rateText),
        ['25 fps', '29.97 fps', '23.976 fps', '12.5 fps', '', '']);
    for (const text of ['', 'x', '00:00:00:25', '00:00:01.5', '1:2', '-1'])
        assert.equal(ticksOf(text, rateOf(25)), undefined, text);
});

test('names and paths that a host could not use are told before', () => {
    for (const path of ['/a', 'D:\\a', 'd:/a', '\\\\server\\share'])
        assert.equal(pathProblem(path), undefined, path);
    for (const path of ['', 'a', './a', 'D:a']) assert.notEqual(pathProblem(path), undefined, path);
    for (const name of ['a/b', 'a\\b', '..', '.', 'x.mov'])
        assert.notEqual(nameProblem(name, { path: '/m/x.mov' }), undefined, name);
    assert.deepEqual(['a.b.mov', 'a', '.hidden'].map(withoutEnding), ['a.b', 'a', '.hidden']);
});

test('lists are searched and put in order as people read', () => {
    const names = ['clip 10', 'Éclair', 'clip 2', 'Clip 2', 'zoo', 'eclair 3'];
    const same = (name) => name;
    assert.deepEqual(inOrder(names, same), ['clip 2', 'Clip 2', 'clip 10', 'Éclair', 'eclair 3', 'zoo']);
    assert.deepEqual(inOrder(names, (name) => name.length === 3, true),
        ['zoo', 'clip 10', 'Éclair', 'clip 2', 'Clip 2', 'eclair 3'], 'those alike stay in order');
    assert.deepEqual(names.filter(finderOf('E\u0301CL')), ['Éclair']);
    assert.deepEqual(names.filter(finderOf(' 2  clip')), ['clip 2', 'Clip 2']);
    assert.equal(finderOf(' '), undefined);
});

test('no more rows are in view than may be, and none that is not there', () => {
    const limits = { rowHeight: 28, count: 10000, spare: 8, most: 180 };
    for (const [top, height, count, expected] of [
        [0, 280, 10000, [0, 18]],
        [280, 280, 10000, [2, 28]],
        [279720, 280, 10000, [9982, 10000]],
        [0, 100000, 10000, [0, 180]],
        [279720, 280, 3, [0, 3]],
        [0, 280, 0, [0, 0]],
    ])
        assert.deepEqual(rowsInView(top, height, { ...limits, count }), expected);
});

test('what is selected is among the rows, whatever comes and goes', () => {
    const grid = new GridModel();
    grid.isMultiple = true;
    grid.keyOf = (row) => row;
    grid.setRows(['a', 'b', 'c', 'd', 'e']);
    for (const [index, how, expected] of [
        [1, {}, 'b'],
        [3, { extend: true }, 'bcd'],
        [0, { extend: true }, 'ab'],
        [4, { toggle: true }, 'abe'],
        [0, { toggle: true }, 'be'],
        [2, { extend: true }, 'abc'],
        [9, {}, 'abc'],
    ]) {
        grid.choose(index, how);
        assert.equal([...grid.selection].sort().join(''), expected, `${index} ${JSON.stringify(how)}`);
    }
    assert.equal(grid.setRows(['x', 'c', 'b']), true);
    assert.deepEqual([[...grid.selection].sort(), grid.active], [['b', 'c'], 1], 'c is the active one still');
    grid.choose(0, { extend: true });
    assert.deepEqual([...grid.selection], ['x'], 'a range that began at a row which is gone begins anew');
    assert.equal(grid.setRows([]), true);
    assert.equal(grid.chooseAll(), false);
    grid.isMultiple = false;
    grid.setRows(['a', 'b']);
    grid.choose(0);
    grid.choose(1, { toggle: true });
    assert.deepEqual([...grid.selection], ['b']);
});

test('how work ended is told with what to do, for each path', () => {
    for (const [answer, status, detail, texts] of [
        [{ result: 'OK' }, 'done', '', []],
        [{}, 'done', '', []],
        [{ result: 'Canceled' }, 'cancelled', '', []],
        [{ result: 'ERROR', errorInfo: 'Disk full.' }, 'failed', /^Disk full\. Check/, []],
        [{ result: 'AccessDenied' }, 'failed', /^Access was denied\. Ask/, []],
        [{ result: 'OK', transferResultList: [{ src: '/a', result: 0 }, { src: '/b', result: -1609629691 }] },
            'done', '', [['/b', /^Access was denied\. Ask/]]],
        [{ result: 'ERROR', actionResultList: [null, { filePath: '/c', errorMessage: 'Gone.' }] },
            'failed', '', [['/c', /^Gone\. Check/]]],
    ]) {
        const outcome = outcomeOf('TransferRequest', answer);
        assert.equal(outcome.status, status);
        assert.match(outcome.detail, new RegExp(detail || '^$'));
        assert.deepEqual(outcome.items.map(({ path }) => path), texts.map(([path]) => path));
        outcome.items.forEach(({ text }, i) => assert.match(text, texts[i][1]));
    }
    const of = (code, how) => outcomeOfError({ code }, how).status;
    assert.deepEqual(['timeout', 'aborted', 'disconnected', 'needs'].map((code) => of(code)),
        ['failed', 'cancelled', 'lost', 'failed']);
    assert.equal(of('timeout', { isSilent: true }), 'done');
});

const header = (taskID) => ({ header: { taskID } });
const kinds = { kind: 'library', pageID: 'panel-1' };
const listed = (taskID, more) =>
    ({ taskID, what: 'TransferRequest', by: 'panel-1', kind: 'library', percentage: null, ...more });
const shown = (tasks) => tasks.all.map(({ id, status }) => `${id} ${status}`);

test('an ingest is followed from step to step', () => {
    const ends = [];
    const tasks = new TaskList((ended) => ended && ends.push(`${ended.id} ${ended.status}`));
    const batch = { batchID: 'x', targetBin: 'Day 1' };
    for (const [name, message, status, detail] of [
        ['StartIngest', {}, 'running', ''],
        ['StartIngestBatch', batch, 'running', 'to Day 1'],
        ['IngestItemsReady', { ingestItemList: [{}, {}] }, 'running', '2 clips ready · to Day 1'],
        ['PauseIngest', { taskIDList: ['a'] }, 'paused'],
        ['ResumeIngest', { taskIDList: ['a'] }, 'running'],
        ['FinishIngestBatch', batch, 'running'],
        ['StartIngestBatch', { batchID: 'y' }, 'running', '2 clips ready · batch 2 of 2 · to Day 1'],
        ['CancelIngest', {}, 'cancelled'],
        ['ResumeIngest', { taskIDList: ['a'] }, 'cancelled'],
    ]) {
        assert.equal(tasks.hear(name, { ...header('a'), ...message }), true);
        assert.equal(tasks.all[0].status, status, name);
        if (detail !== undefined) assert.equal(tasks.all[0].detail, detail, name);
    }
    tasks.hear('IngestItemsReady', { ...header('b'), ingestItemList: [{}] });
    assert.deepEqual(shown(tasks), ['b done', 'a cancelled'],
        'nobody tells the end of what nobody told to begin');
    assert.equal(tasks.hear('TransferProgress', { ...header('unknown'), percentage: 3 }), false);
    tasks.hear('IngestItemsReady', { ...header('b'), ingestItemList: [{}] });
    assert.deepEqual([tasks.all[0].detail, ends], ['2 clips ready', ['a cancelled', 'b done']],
        'an end is told once');
    tasks.hear('StartIngest', header('b'));
    assert.deepEqual([tasks.all[0].detail, ...shown(tasks)], ['', 'b running', 'a cancelled']);
});

test('what the host lists is so', () => {
    const tasks = new TaskList();
    const lists = (...items) => tasks.heardState(items, kinds);
    const [own, others, collections] =
        [listed('a'), listed('b', { by: 'panel-2' }), listed('c', { kind: 'mediaCollection' })];
    const steps = [
        ['two of this kind', () => lists(own, others, collections), ['b running', 'a running']],
        ['a pause', () => lists({ ...own, isPaused: true }, others), ['b running', 'a paused']],
        ['no longer there', () => lists(), ['a lost']],
        ['there again', () => lists(own), ['a running']],
        ['an awaited one', () => {
            tasks.begin({ id: 'd', what: 'TranscodeRequest', isAwaited: true });
            lists(own, listed('d'));
            lists(own);
        }, ['d running', 'a running']],
        ['answered', () => tasks.end('d', { status: 'done', detail: '' }), ['a running', 'd done']],
        ['an old list', () => lists(own, listed('d')), ['a running', 'd done']],
        ['a gap', () => {
            tasks.hear('StartIngest', header('e'));
            tasks.gap();
        }, ['a running', 'e lost', 'd done']],
        ['heard of again', () => tasks.hear('FinishIngest', header('e')), ['a running', 'e done', 'd done']],
        ['a brief one', () => {
            tasks.begin({ id: 'f', what: 'RenameRequest', isBrief: true });
            tasks.end('f', { status: 'done', detail: '' });
            lists(own, listed('f'));
            lists(own);
        }, ['a running', 'e done', 'd done']],
        ['cleared', () => tasks.clear(), ['a running']],
    ];
    for (const [what, step, expected] of steps) {
        step();
        assert.deepEqual(shown(tasks), expected, what);
    }
    for (let i = 0; i < 100; i++) tasks.hear('CancelIngest', header(`x${i}`));
    assert.equal(tasks.all.length, 21);
});

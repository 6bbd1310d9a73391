// The desk's own pages, without a browser: what they make of the lines of sessions, and what they send.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { parseNotification } from '../../panels/client/index.js';
import { readJson, writeJson } from '../../panels/desk/json.js';
import { connectDesk } from '../../panels/desk/tools.js';
import { callbacks, labelsOf } from '../../panels/host/examples.js';
import { leftOver, statuses } from '../../panels/host/statuses.js';
import { statusOf, stepsOf } from '../../panels/host/steps.js';
import { Watch } from '../../panels/host/watch.js';
import { idsOf } from '../../panels/traffic/lines.js';
import { TrafficLog, durationOf, filterFor } from '../../panels/traffic/log.js';
import { partsOf, placeOf, print } from '../../panels/traffic/printer.js';
import { readFileSync } from 'node:fs';
import { folder, run, session } from './program.mjs';

const inputs = ['panel', 'station', 'callback', 'call', 'create', 'release', 'register', 'host', 'ui'];
const isInput = (line) => inputs.some((key) => key in line);

/** Lines as the desk hands them on, a millisecond apart. */
function entriesOf(lines) {
    let cause;
    return lines.map((line, i) => {
        const number = i + 1;
        if (isInput(line))
            cause = number;
        const timed = line.host === undefined ? { ...line, us: i * 1000 } : line;
        return { number, line: timed, ...(!isInput(line) && { cause }) };
    });
}

const logOf = (...names) => {
    const log = new TrafficLog();
    log.add(entriesOf(names.flatMap(session)));
    return log;
};

const everyText = ['callbacks', 'exceptions', 'host-answers', 'ingest-media', 'library-day',
    'media-collection-day', 'registration', 'requests'].flatMap(session).map(({ data }) => data)
    .filter((data) => typeof data === 'string');

test('there is an example of every callback, with the arguments that replay takes', () => {
    const source = readFileSync(new URL('../../session/Operations.cpp', folder), 'utf8');
    const rows = [...source.matchAll(/Row<&Notifier::(\w+)>\("\w+",\s*([^)]*)\)/g)].map(([, name, labels]) =>
        [name, [...labels.matchAll(/"([^"]*)"/g)].map(([, label]) => label)]);
    assert.equal(rows.length, 29);
    assert.deepEqual(callbacks.map(({ name }) => [name, labelsOf(name)]), rows);
    const lines = callbacks.flatMap(({ name, example, fails }) => [example, { ...example, ...fails }]
        .flatMap((args) => ['library', 'mediaCollection'].map((to) =>
            ({ callback: name, to, args: Object.values(args) }))));
    const created = ['library', 'mediaCollection'].map((create) => ({ create }));
    const played = run([...created, ...lines].map((line) => JSON.stringify(line)).join('\n'), 'replay');
    for (const { name, fails } of callbacks.filter(({ fails }) => fails !== undefined))
        assert.deepEqual(Object.keys(fails).filter((label) => !labelsOf(name).includes(label)), [], name);
    assert.doesNotMatch(played, /"exception"/);
});

test('each status of the host says in its text what its example says', () => {
    assert.ok(statuses.length > 30);
    assert.deepEqual(leftOver, []);
    for (const { identifier, example } of statuses) {
        const text = run(JSON.stringify({ header: {}, ...example }), 'encode');
        const record = parseNotification(identifier, text);
        assert.deepEqual(Object.keys(record).sort(), ['header', ...Object.keys(example)].sort(), identifier);
    }
});

test('what runs can be carried out by hand, with what was asked', () => {
    const [taskID, msgID] = ['t', 'm'];
    const cases = [
        ['TransferRequest', ['StartTransfer', [{ src: '/a/b.mov', dst: 'D:\\c\\', dstIsParent: true }, null]],
            ['Progress 25 %', 'Finished', 'Failed'], [0, [{ src: '/a/b.mov', dst: 'D:\\c/b.mov' }]]],
        ['RenameRequest', ['RenameItems', [{ src: '/a/b.mov', newName: 'c.mov' }]], ['Finished', 'Failed'],
            [0, [{ src: '/a/b.mov', dst: '/a/c.mov' }]]],
        ['RequestThumbnail', ['CreateThumbnail', '/x.mov', 5, 'a', 'b', 'i'], ['Finished', 'Failed'],
            [0, '/x.mov', 'a', 5, '/cache/thumbs/A001_C001.png', 'b', 'i']],
        ['TranscodeRequest', ['StartTranscode', '/p', '/out', true, [{ filePath: '/x/y.mov' }]],
            ['Progress 25 %', 'Finished', 'Failed'], [0, '', '/out/y.mov']],
        ['GetMediaPropertyInfo', undefined, ['Finished', 'Failed'], undefined],
    ];
    for (const [what, call, labels, args] of cases) {
        const [dispatcher, ...rest] = call ?? [];
        const steps = stepsOf({ what, taskID, msgID, percentage: null },
            call && { dispatcher, args: [taskID, msgID, ...rest] });
        assert.deepEqual(steps.map(({ label }) => label), labels, what);
        if (args !== undefined)
            assert.deepEqual(steps.find(({ label }) => label === 'Finished').args, [taskID, msgID, ...args]);
        assert.ok(steps.at(-1).args.includes(-2147483648), what);
    }
    assert.equal(stepsOf({ what: 'Ingest', taskID, msgID }).length, 9);
    const late = stepsOf({ what: 'TransferRequest', taskID, msgID, percentage: 90 });
    assert.deepEqual(late[0].args, ['t', 'm', 100]);
    assert.match(statusOf({ what: 'GetCurrentWorkMode' }), /\.GetCurrentWorkModeStatus$/);
    assert.equal(statusOf({ what: 'TransferRequest' }), undefined);
});

test('the host page knows what its windows would show', () => {
    const watch = new Watch();
    const heard = [];
    const hear = (line, rest) => watch.hear([{ number: heard.push(line), line, ...rest }]);
    const opening = { dispatcher: 'ShowIngestDialog', args: ['t', 'M', 'Day 1'] };
    const data = '<browserID ID="x"/><msgID ID="3e550001-0000-4000-8000-000000000001"/>';
    hear({ panel: 'com.velmo.browser.event.OpenIngestDialog', data }, { by: 'panel-1' });
    hear(opening, { cause: 1, marks: ['held back'] });
    assert.equal(watch.dialog, undefined, 'a call that is held back opens nothing');
    hear(opening, { cause: 1 });
    assert.deepEqual(watch.dialog, { number: 3, task: 't', message: 'M', bin: 'Day 1', by: 'panel-1' });
    hear({ dispatcher: 'StartMediaIngest', args: ['own', 'm', {}] });
    hear({ callback: 'OnIngestStarted', args: ['own'] });
    assert.ok(watch.dialog, 'an ingest that a panel asked for shuts no dialog');
    for (const callback of ['OnIngestStarted', 'OnIngestCancelled']) {
        hear({ callback, args: ['t'] });
        assert.equal(watch.dialog, undefined);
        hear(opening, { cause: 1 });
    }
    hear({ dispatcher: 'ReportPanelEvent', args: ['t', 'm', 2, 'Oh', true], us: 7 }, { cause: 1 });
    assert.deepEqual(watch.reports,
        [{ number: heard.length, us: 7, level: 'ERROR', text: 'Oh', isShown: true, by: 'panel-1' }]);
    assert.deepEqual(watch.requests.map(({ what, browserID, msgID }) => [what, browserID, msgID]),
        [['OpenIngestDialog', 'x', '3e550001-0000-4000-8000-000000000001']]);
    assert.equal(watch.callOf('m').args[3], 'Oh');
    for (let i = 0; i < 5000; ++i)
        hear({ dispatcher: 'ReportPanelEvent', args: [`${i}`, `${i}`, 0, '', false] });
    assert.equal(watch.reports.length, 200);
    assert.equal(watch.callOf('1'), undefined, 'old calls are forgotten');
});

test('lines belong together by cause, by ids and by answers', () => {
    const log = logOf('library-day');
    const row = (key, name) => log.rows.find((each) => each.line[key]?.endsWith?.(name));
    const request = row('panel', 'TransferRequest');
    const relations = [...log.relations(request)].map(([number, how]) => [log.find(number).name, how]);
    assert.deepEqual(relations, [['StartTransfer', 'effect'], ['OnTransferProgress', 'same message'],
        ['TransferProgress', 'same message'], ['OnTransferStatus', 'same message'],
        ['TransferStatus', 'answer']]);
    assert.deepEqual(durationOf(request), { us: 5000, of: 'answer' });
    assert.deepEqual(durationOf(row('callback', 'OnTransferStatus')), { us: 1000, of: 'last effect' });
    assert.equal(log.relations(row('notification', 'TransferStatus')).get(request.number), 'request');
    const paths = log.rows.map(({ name, from, to }) => `${name}: ${from} -> ${to}`);
    for (const path of ['ExitApp: panel-1 -> connectors', 'OnRenameStatus: host -> library',
        'RenameStatus: library -> panel-1', 'RefuseExit: connector -> host'])
        assert.ok(paths.includes(path), path);
    assert.deepEqual(log.inputsOf(log.rows.map(({ number }) => number)),
        entriesOf(session('library-day')).filter(({ line }) => isInput(line)).map(({ number }) => number));
});

test('every line of the sessions has its place and its name', () => {
    const log = logOf('callbacks', 'exceptions', 'ingest-media', 'media-collection-day', 'registration',
        'requests');
    for (const { number, name, kind, lanes, from, to } of log.rows)
        assert.ok(name !== '' && name !== 'undefined' && kind !== 'unknown line' && lanes.length === 2 &&
            from !== undefined && to !== undefined, `${number}: ${kind} ${name} ${from} ${to}`);
});

test('ids are what the host reads as ids', () => {
    const [task, message] = ['7A5C0001-0000-4000-8000-000000000001', '3e550001-0000-4000-8000-000000000001'];
    const list = `<taskIDList><taskID>${task}</taskID><taskID>${message}</taskID></taskIDList>`;
    const cases = [
        [{ panel: 'a.b', data: `<taskID ID="{${task}}"/><msgID ID='${message}'/>` }, ['task', 'message']],
        [{ panel: 'a.b', data: `<MsgID ID="${message}"/><taskID ID="x"/>` }, []],
        [{ notification: 'a.b', data: list }, ['task', 'task']],
        [{ dispatcher: 'X', args: [task, message, task] }, ['task', 'message']],
        [{ dispatcher: 'RefuseExit', args: [-1] }, []],
        [{ callback: 'OnIngestPaused', args: [[task, message]] }, ['task', 'task']],
        [{ callback: 'OnIngestBatchStarted', args: [task, message, 'Bin'] }, ['task', 'batch']],
        [{ callback: 'OnIngestStarted', args: ['00000000-0000-0000-0000-000000000000'] }, []],
        [{ post: 'A', payload: { header: { taskID: task, msgID: message }, batchID: task } },
            ['task', 'message', 'batch']],
        [{ post: 'A', payload: null }, []],
    ];
    for (const [line, roles] of cases)
        assert.deepEqual(idsOf(line).map(({ role }) => role), roles, JSON.stringify(line));
    assert.equal(idsOf(cases[0][0])[0].id, task.toLowerCase());
});

test('filters find what was asked for', () => {
    const log = logOf('library-day');
    const [marked] = log.add([{ number: 1000, line: { note: 'x', us: 1 }, marks: ['fault: dropped'] }]);
    const all = log.rows.length;
    const cases = [
        [{}, all],
        [{ hidden: new Set(['notification', 'callback']) }, (count) => count < all - 20],
        [{ words: 'harbour_BOATS' }, 4],
        [{ words: 'ID="Day 1"' }, 2],
        [{ words: '(' }, 0],
        [{ who: 'host', words: 'StartTranscode' }, 1],
        [{ who: 'panel-1', hidden: new Set(['request']), words: 'StartIngest' }, 2],
        [{ id: '7a5c0006-0000-4000-8000-000000000006' }, 6],
        [{ isRemarkable: true }, [marked]],
    ];
    for (const [wanted, expected] of cases) {
        const found = log.rows.filter(filterFor(wanted));
        if (typeof expected === 'function')
            assert.ok(expected(found.length), `${JSON.stringify(wanted)} ${found.length}`);
        else
            assert.deepEqual(Array.isArray(expected) ? found : found.length, expected,
                JSON.stringify(wanted));
    }
});

test('a log keeps what it may, and forgets the rest for good', () => {
    const log = new TrafficLog({ most: 100, mostText: 200000 });
    const line = (data) => ({ panel: 'com.velmo.browser.event.ExitApp', us: 1, data });
    for (let number = 1; number <= 250; ++number)
        log.add([{ number, line: line('<msgID ID="3e550008-0000-4000-8000-000000000008"/>') }]);
    assert.ok(log.rows.length <= 100 && log.rows.length >= 90);
    assert.equal(log.dropped + log.rows.length, 250);
    assert.equal(log.find(1), undefined);
    assert.equal(log.relations(log.rows[0]).size, log.rows.length - 1);
    log.add([{ number: 251, line: line('x'.repeat(300000)) }]);
    assert.deepEqual(log.rows.map(({ number }) => number), [251], 'one that is too large alone is shown');
});

test('a printed text is the text', () => {
    assert.ok(everyText.length > 300);
    const odd = ['', 'a', '<', '<a', '<a b="', '<a b="<c/>', '</a>', '<a><b></a></b>', '<!-- <!-- <![CDATA[',
        '<a>1 < 2</a>', '<n name="Clip "A"" x="1"/>', '<a> </a>', '<?x', '&lt;a&gt;', '<a/>>'];
    for (const text of [...everyText, ...odd]) {
        assert.equal(partsOf(text).map((part) => part.text).join(''), text);
        for (const { text: part, at } of partsOf(text))
            assert.equal(text.slice(at, at + part.length), part);
        const printed = print(text).flatMap(({ parts }) => parts.map((part) => part.text)).join('');
        assert.equal(printed, text.replace(/(?<=>)\s+(?=<(?!\/a>))/g, ''));
    }
    const lines = print('<a>\n <b c="1>2"><d>x</d><e/></b>\n <f> </f></a>');
    assert.deepEqual(lines.map(({ depth, parts }) => depth + parts.map(({ text }) => text).join('')),
        ['0<a>', '1<b c="1>2">', '2<d>x</d>', '2<e/>', '1</b>', '1<f> </f>', '0</a>']);
    assert.equal(placeOf('ab\ncd', 2, 2), 4);
    const begin = Date.now();
    print('<!-- <a b="'.repeat(200000));
    assert.ok(Date.now() - begin < 5000, 'hostile texts take no time');
});

test('JSON has places, large integers and no doubled keys', () => {
    const good = '{"a": [1, -2.5, 9223372036854775807, true, null, "\\u00e9\\n"], "b": {}}';
    assert.deepEqual(readJson(good), { a: [1, -2.5, 9223372036854775807n, true, null, 'é\n'], b: {} });
    assert.equal(writeJson(readJson(good)), good.replace('\\u00e9', 'é'));
    assert.deepEqual(readJson(writeJson(readJson(good), { width: 20 })), readJson(good));
    const bad = { '': '1, column 1: the text ends', '[1,\n 2': '2, column 3: a comma or ]',
        '{"a": 1 "b"}': '1, column 9', '{"a": 1,\n "a": 2}': '2, column 2: the key "a"',
        '[01]': '1, column 3', '[1] 2': '1, column 5: something',
        '["a\nb"]': '1, column 2: a string that does not end', '["\\x"]': '1, column 2: a string with',
        '{a: 1}': '1, column 2: a key', '[nul]': '1, column 2: no value' };
    for (const [text, expected] of Object.entries(bad))
        assert.throws(() => readJson(text), ({ message }) => message.startsWith(`line ${expected}`), text);
    assert.throws(() => readJson('['.repeat(100000)), /levels deep/);
});

/** A desk with the sockets that pages made of it. */
function fakeDesk(tell) {
    const sockets = [];
    const socket = () => {
        const made = { frames: [], send: (text) => made.frames.push(JSON.parse(text)),
            close: (code) => { made.closed = code; } };
        sockets.push(made);
        return made;
    };
    const desk = connectDesk('ws://desk/', tell, { socket, firstDelay: 1, longestDelay: 1000, timeout: 30 });
    const send = (frame) => sockets.at(-1).onmessage({ data: JSON.stringify(frame) });
    return { desk, sockets, send, open: async (number) => {
        while (sockets.at(-1).onopen === undefined || sockets.at(-1).frames.length > 0)
            await new Promise((resolve) => setTimeout(resolve, 1));
        sockets.at(-1).onopen();
        send({ welcome: { kind: 'desk', number } });
    } };
}

test('commands settle whatever becomes of the connection', async () => {
    const events = [];
    const { desk, sockets, send, open } = fakeDesk({ connection: (...event) => events.push(event) });
    await assert.rejects(desk.do('step'), { code: 'disconnected' });
    await open(0);
    const done = desk.do('callback', { callback: 'OnX', args: [9223372036854775807n] });
    const refused = desk.do('step');
    const unheard = desk.do('exit');
    assert.deepEqual(sockets[0].frames.slice(1).map(({ number }) => number), [1, 2, 3]);
    for (const frame of [{ done: 1, value: null }, { done: 2, error: 'nothing waits' }, { done: 9 }])
        send(frame);
    assert.equal(await done, null);
    await assert.rejects(refused, { code: 'refused', message: 'nothing waits' });
    await assert.rejects(unheard, { code: 'timeout' });
    const lost = desk.do('raise');
    sockets[0].onclose({ code: 1006, reason: 'gone' });
    await assert.rejects(lost, { code: 'disconnected' });
    await open(0);
    assert.deepEqual(events, [['open'], ['waiting', 'gone'], ['open']]);
    const last = desk.do('step');
    assert.equal(sockets[1].frames[1].number, 1, 'numbers begin anew with each connection');
    desk.close();
    await assert.rejects(last, { code: 'disconnected' });
});

test('traffic comes once, and what is missing is told', async () => {
    const [heard, gaps] = [[], []];
    const { sockets, send, open } = fakeDesk({
        traffic: (entries) => heard.push(...entries.map(({ number }) => number)),
        gap: (text) => gaps.push(text) });
    const entries = (...numbers) => ({ traffic: numbers.map((number) => ({ number, line: { ui: true } })) });
    await open(3);
    send(entries(1, 2));
    send(entries(2, 3));
    send(entries(6));
    assert.deepEqual(heard, [1, 2, 3, 6]);
    assert.match(gaps[0], /^2 entries before number 6/);
    sockets[0].onclose({ code: 1006, reason: '' });
    await open(6);
    assert.deepEqual(sockets[1].frames[0], { hello: { kind: 'desk', heard: 6, traffic: true } });
    sockets[1].onclose({ code: 1006, reason: '' });
    await open(2);
    send(entries(1, 2));
    assert.deepEqual(heard, [1, 2, 3, 6, 1, 2], 'a desk with fewer entries is another one');
    assert.match(gaps[1], /anew/);
    for (const frame of [{ traffic: 1 }, { traffic: [null] }, { traffic: [{ number: 3 }] },
        { traffic: [{ number: 'x', line: {} }] }]) {
        send(frame);
        assert.equal(sockets.at(-1).closed, 4100, JSON.stringify(frame));
        await open(2);
    }
});

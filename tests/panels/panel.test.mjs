// Whose request and whose notification it is, and that everything settles.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Panel, newGuid } from '../../panels/client/index.js';

const text = ({ browserID = '', msgID = newGuid(), taskID = newGuid() }, content = '') =>
    `<hostNotification><browserID ID="${browserID}"/><msgID ID="${msgID}"/><taskID ID="${taskID}"/>` +
    `${content}</hostNotification>`;
const idsOf = (xml) => Object.fromEntries(['browserID', 'msgID', 'taskID'].map((name) =>
    [name, new RegExp(`<${name} ID="([^"]*)"`).exec(xml)[1]]));
const withRace = (promise) => Promise.race([promise, new Promise((_, reject) =>
    setTimeout(() => reject(new Error('it hangs')), 1000).unref())]);
const settled = (promise) => withRace(promise.then((value) => ({ value }), (error) => ({ error })));

/** A host that says the same to all of its panels, and remembers what they raise. */
class Host {
    constructor() {
        this.listeners = new Set();
        this.raised = [];
    }

    panel(options, more = {}) {
        const heard = [];
        const problems = [];
        const panel = new Panel({
            raise: (type, xml) => this.raised.push({ type: type.replace(/.*\./, ''), ...idsOf(xml), xml }),
            hear: (listener) => {
                this.listeners.add(listener);
                return () => this.listeners.delete(listener);
            },
            watch: (observer) => { this.observe = observer; },
            ...more,
        }, { timeout: 500, problem: (error) => problems.push(error), ...options });
        panel.on('*', (_, type) => heard.push(type.replace(/.*\./, '')));
        return Object.assign(panel, { heard, problems, took: () => heard.splice(0) });
    }

    say(name, header, content) {
        const family = name.startsWith('request') ? 'eabrowser.event' : 'host.notification';
        for (const listener of [...this.listeners])
            listener(`com.velmo.${family}.${name}`, text(header, content));
    }
}

const info = { assetMediaInfoList: [{ mediaPath: '/a.mov' }] };
const file = { fileList: ['/a.mov'] };
const collection = 'MediaCollection';

test('an answer has the message id, an identifier of the model and the browser id', async () => {
    // Who asks what; what does not answer it, as [identifier, browser id]; what does.
    for (const [kind, name, content, others, answer] of [
        ['library', 'TransferRequest', {}, [['TransferStatus', collection], ['TransferStatus', 'two'],
            ['TransferStatus', ''], ['RenameStatus', 'one'], ['TransferProgress', 'one']],
            ['TransferStatus', 'one']],
        ['library', 'ReadXMPFromDisk', info, [['ReadXMPFromDiskStatus', collection]],
            ['ImportXMPStatus', 'one']],
        ['library', 'ImportXMP', file, [['ReadXMPFromCacheStatus', 'one']], ['ReadXMPFromDiskStatus', 'one']],
        ['mediaCollection', 'ImportXMP', file,
            [['ReadXMPFromDiskStatus', collection], ['ImportXMPStatus', 'one']],
            ['ImportXMPStatus', collection]],
        ['mediaCollection', 'ReadXMPFromDisk', info, [['ReadXMPFromDiskStatus', 'one']],
            ['ReadXMPFromDiskStatus', collection]],
        ['library', 'ReadXMPFromCache', info, [['ReadXMPFromCacheStatus', 'one']],
            ['ReadXMPFromCacheStatus', collection]],
        ['library', 'IngestMedia', {}, [['IngestMediaStatus', 'two']], ['IngestMediaStatus', 'one']],
        ['library', 'GetMediaPropertyInfo', {}, [], ['GetMediaPropertyInfoStatus', collection]],
        ['library', 'GetCurrentWorkMode', {}, [['GetCurrentWorkModeStatus', collection]],
            ['GetCurrentWorkModeStatus', '']],
    ]) {
        const host = new Host();
        const panel = host.panel({ kind, browserID: 'one' });
        const promise = settled(panel.request(name, content));
        const [{ msgID, browserID }] = host.raised;
        assert.equal(browserID, kind === 'library' ? 'one' : collection);
        host.say(answer[0], { browserID: answer[1] }, '<result>of another request</result>');
        panel.took();
        for (const [type, id] of others)
            host.say(type, { msgID, browserID: id }, '<result>no</result>');
        host.say(answer[0], { msgID, browserID: answer[1] }, '<result>yes</result>');
        host.say(answer[0], { msgID, browserID: answer[1] }, '<result>twice</result>');
        assert.equal((await promise).value?.result, 'yes', name);
        assert.ok(!panel.took().includes(answer[0]), `${name}: an answer is no news`);
        panel.close();
    }
});

test('two library panels and a media collection panel take what is theirs', () => {
    const host = new Host();
    const panels = [{ browserID: 'one' }, { browserID: 'two' }, { kind: 'mediaCollection' }].map((options) =>
        host.panel(options));
    for (const [type, browserID, ...takers] of [
        ['IngestItemsReady', '', 1, 1, 0], ['IngestItemsReady', collection, 0, 0, 1],
        ['TransferProgress', 'two', 1, 1, 0], ['InitMiniMetadata', collection, 0, 0, 1],
        ['AppExit', '', 1, 1, 0], ['SaveAsset', collection, 0, 0, 1],
        ...['StartIngest', 'StartIngestBatch', 'FinishIngestBatch', 'FinishIngest', 'CancelIngest',
            'PauseIngest', 'ResumeIngest', 'XMPFileTimeChanged', 'ReadRoughCutFromDiskStatus', 'FileChanged',
            'XMPChanged']
            .map((name) => [name, '', 1, 1, 1]),
        // What answers comes as news, too, unless it names another panel; what only answers never does.
        ['ImportXMPStatus', '', 1, 1, 0], ['ImportXMPStatus', 'one', 1, 0, 0],
        ['ImportXMPStatus', collection, 0, 0, 0], ['ReadXMPFromDiskStatus', '', 0, 0, 0],
        ['TransferStatus', 'one', 0, 0, 0], ['requestInitInfoStatus', '', 0, 0, 0],
    ]) {
        host.say(type, { browserID });
        assert.deepEqual(panels.map((panel) => panel.took().length), takers, `${type} for '${browserID}'`);
    }
    for (const listener of host.listeners)
        listener('com.velmo.host.notification.OfAnotherVersion', '<');
    assert.deepEqual(panels.flatMap((panel) => panel.problems), []);
});

test('requests that cannot be answered settle at once', async () => {
    const host = new Host();
    const panel = host.panel({ browserID: 'one' }, { handles: ['com.velmo.browser.event.SaveAssetStatus'] });
    for (const [name, content, expected] of [
        ...['FinishImportFile', 'ReportEvent', 'ExitApp', 'TransferCancel', 'TranscodeCancel',
            'ConcatenationCancel', 'com.velmo.browser.event.SaveAssetStatus']
            .map((nobody) => [nobody, { actionResultList: [{}] }, null]),
        ['OpenAsset', {}, 'unhandled'], ['requestInitInfo', {}, 'unhandled'], ['ImportXMP', {}, 'needs'],
        ['ImportXMP', { fileList: [''] }, 'needs'], ['FinishImportFile', {}, 'needs'],
        ['WriteXMPToDisk', {}, 'needs'],
        ['TranscodeRequest', { transcodeItemList: [null] }, 'needs'], ['Transfer', {}, 'invalid'],
        ['TransferRequest', { src: 1 }, 'invalid'], ['TransferRequest', null, 'invalid'],
    ]) {
        const before = host.raised.length;
        const { value, error } = await settled(panel.request(name, content));
        assert.equal(error?.code ?? value, expected, `${name}: ${error}`);
        assert.equal(host.raised.length - before, expected === null ? 1 : 0, name);
    }
    const { error } = await settled(panel.request('TransferRequest', {}, { timeout: Infinity }));
    assert.equal(error.code, 'invalid');
});

test('aborting raises the cancel with the ids of the request', async () => {
    for (const [name, content, cancel] of [
        ['TransferRequest', {}, 'TransferCancel'], ['RenameRequest', {}, undefined],
        ['TranscodeRequest', { transcodeItemList: [{}] }, 'TranscodeCancel'],
        ['ConcatenationRequest', { concatenationItemList: [{}] }, 'ConcatenationCancel'],
    ]) {
        const host = new Host();
        const panel = host.panel();
        const [controller, late] = [new AbortController(), AbortSignal.abort('never')];
        const promise = settled(panel.request(name, content, { signal: controller.signal }));
        controller.abort('enough');
        const [{ msgID, taskID }, ...cancels] = host.raised;
        assert.deepEqual(cancels.map((raised) => [raised.type, raised.msgID, raised.taskID]),
            cancel === undefined ? [] : [[cancel, msgID, taskID]]);
        const { error } = await promise;
        assert.deepEqual([error.name, error.code, error.cause], ['PanelError', 'aborted', 'enough']);
        assert.equal(error.request, `com.velmo.browser.event.${name}`);
        assert.equal((await settled(panel.request(name, content, { signal: late }))).error.code, 'aborted');
        assert.equal(host.raised.length, 1 + cancels.length, 'what was aborted before is never raised');
        const after = new AbortController();
        const answered = settled(panel.request(name, content, { signal: after.signal }));
        host.say(name.replace(/(Request)?$/, 'Status'), { msgID: host.raised.at(-1).msgID });
        after.abort();
        assert.ok((await answered).value !== undefined);
        assert.equal(host.raised.at(-1).type, name, 'there is nothing to cancel');
    }
});

test('no promise and no task hangs', async () => {
    const garbled = (host, { msgID, browserID }) => {
        const cut = text({ msgID, browserID }, '<result>').slice(0, -30);
        for (const listener of host.listeners)
            listener('com.velmo.host.notification.TransferStatus', cut);
    };
    for (const [what, code, happens] of [
        ['the connection closes', 'disconnected', (host) => host.observe('closed', 'the host ended')],
        ['notifications were lost', 'disconnected', (host) => host.observe('gap')],
        ['the panel is closed', 'disconnected', (host, _, panel) => panel.close()],
        ['the answer is garbage', 'garbled', garbled],
        ['nothing comes', 'timeout', () => {}],
    ]) {
        const host = new Host();
        const panel = host.panel({ browserID: 'one', timeout: 50 });
        const taskID = newGuid();
        const task = panel.task(taskID.toUpperCase());
        const step = settled(task.next());
        const promise = settled(panel.request('TransferRequest', { header: { taskID } }));
        happens(host, host.raised[0], panel);
        assert.deepEqual([(await promise).error?.code, (await step).error?.code], [code, code], what);
        assert.deepEqual((await settled(task.next())).value, { value: undefined, done: true });
        const ended = what === 'the connection closes' || what === 'the panel is closed';
        const { error } = await settled(panel.request('TransferRequest', {}, { timeout: 1 }));
        assert.equal(error.code, ended ? 'disconnected' : 'timeout', `after: ${what}`);
    }
    const raise = () => { throw new Error('no way'); };
    for (const name of ['TransferRequest', 'ReportEvent']) {
        const { error } = await settled(new Host().panel({}, { raise }).request(name));
        assert.deepEqual([error.code, error.cause.message], ['disconnected', 'no way']);
    }
});

test('handlers that throw, and garbage, harm nobody', async () => {
    const host = new Host();
    const panel = host.panel({ browserID: 'one', state: () => { throw new Error('state'); } });
    const off = panel.on('StartIngest', () => { throw new Error('handler'); });
    panel.on('StartIngest', async () => { throw new Error('later'); });
    host.say('StartIngest', {});
    host.observe('state', {});
    for (const garbage of ['', '<', '<n><msgID ID="', '\0', undefined, 5])
        for (const listener of host.listeners)
            listener('com.velmo.host.notification.StartIngest', garbage);
    await new Promise(setImmediate);
    assert.deepEqual(panel.problems.map(({ message, code }) => code ?? message).sort(),
        [...Array(6).fill('garbled'), 'handler', 'later', 'state'].sort());
    off();
    host.say('StartIngest', {});
    assert.equal(panel.problems.filter(({ message }) => message === 'handler').length, 1);
    assert.deepEqual(panel.took(), ['StartIngest', 'StartIngest']);
    assert.throws(() => panel.on('StartIngests', () => {}), { code: 'invalid' });
});

test('a task is followed to its end', async () => {
    const host = new Host();
    const panel = host.panel({ browserID: 'one' });
    const followed = async (task) => {
        const steps = [];
        for await (const { name, message } of task)
            steps.push([name, message.percentage]);
        return steps;
    };
    const taskID = newGuid();
    const transfer = settled(followed(panel.task(taskID)));
    const answer = settled(panel.request('TransferRequest', { header: { taskID } }, { timeout: 200 }));
    const [{ msgID }] = host.raised;
    for (let percentage = 25; percentage < 100; percentage += 25) {
        await new Promise((resolve) => setTimeout(resolve, 100));  // in all longer than the time limit
        host.say('TransferProgress', { msgID, taskID }, `<percentage>${percentage}</percentage>`);
    }
    host.say('TransferStatus', { browserID: 'one', msgID, taskID }, '<result>OK</result>');
    assert.equal((await answer).value.result, 'OK');
    assert.deepEqual((await transfer).value, [['TransferProgress', 25], ['TransferProgress', 50],
        ['TransferProgress', 75], ['TransferStatus', undefined]]);

    const ingest = panel.task(taskID);
    for (const name of ['StartIngest', 'IngestMediaStatus', 'FinishIngestBatch'])
        host.say(name, { taskID });
    const ids = [newGuid(), taskID].map((id) => `<taskID ID="${id}"/>`);
    host.say('PauseIngest', {}, `<taskIDList>${ids.join('')}</taskIDList>`);
    host.say('FinishIngest', { taskID });
    host.say('StartIngest', { taskID });
    assert.deepEqual((await settled(followed(ingest))).value.map(([name]) => name),
        ['StartIngest', 'IngestMediaStatus', 'FinishIngestBatch', 'PauseIngest', 'FinishIngest']);

    const slow = panel.task(taskID);
    for (let i = 0; i < 1000; ++i)
        host.say('TransferProgress', { taskID }, `<percentage>${i}</percentage>`);
    host.say('TransferStatus', { taskID, browserID: 'one' });  // as after a reload
    const steps = (await settled(followed(slow))).value;
    assert.deepEqual([steps.length, steps[0][1], steps.at(-1)[0]], [256, 745, 'TransferStatus']);

    const [left, unread] = [panel.task(taskID), panel.task(taskID)];
    const waiting = settled(left.next());
    await left.return();
    host.say('TransferProgress', { taskID });
    await unread.return();
    for (const next of [waiting, settled(left.next()), settled(unread.next())])
        assert.deepEqual((await next).value, { value: undefined, done: true });
});

test('after a gap the panel asks how things stand, where the host answers that', async () => {
    const host = new Host();
    const events = [];
    const panel = host.panel({ browserID: 'one', connection: (...event) => events.push(event) },
        { handles: ['com.velmo.eabrowser.event.requestInitInfo'] });
    host.observe('waiting', 'a reason');
    host.observe('gap');
    assert.deepEqual(host.raised.map(({ type }) => type), ['requestInitInfo']);
    host.say('requestInitInfoStatus', { browserID: 'one', msgID: host.raised[0].msgID });
    await new Promise(setImmediate);
    assert.deepEqual(panel.took(), ['requestInitInfoStatus']);
    assert.deepEqual(events.map(([event]) => event), ['waiting', 'gap']);
    const raise = () => { throw new Error('no way'); };
    const mute = host.panel({}, { raise, handles: ['requestInitInfo'] });
    host.observe('gap');
    await new Promise(setImmediate);
    assert.deepEqual(mute.problems.map(({ code }) => code), ['disconnected']);
});

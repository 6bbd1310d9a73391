// The frames of docs/panel-client.md, with a host's end of sockets that forgets nothing by itself.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Panel, connectWebSocket } from '../../panels/client/index.js';

const pause = (ms = 0) => new Promise((resolve) => setTimeout(resolve, ms));

/** A host with all sockets that were made, the last of which is open. */
class Host {
    constructor(options) {
        this.sockets = [];
        const host = this;
        const delays = { firstDelay: 5, longestDelay: 20, giveUpAfter: 2000 };
        this.options = { kind: 'mediaCollection', ...delays, ...options,
            socket: () => {
                const socket = { frames: [], send: (text) => socket.frames.push(JSON.parse(text)),
                    close: (code, reason) => { socket.closed = [code, reason]; } };
                host.sockets.push(socket);
                return socket;
            } };
    }

    get socket() {
        return this.sockets.at(-1);
    }

    send(frame) {
        this.socket.onmessage({ data: typeof frame === 'string' ? frame : JSON.stringify(frame) });
    }

    async welcome(welcome) {
        while (this.socket.onopen === undefined || this.socket.isOpen)
            await pause(1);
        this.socket.isOpen = true;
        this.socket.onopen();
        const usual = { session: 's', browserID: 'one', handles: ['a.b'], number: 0, heard: 0 };
        this.send({ welcome: { ...usual, ...welcome } });
    }

    async connect() {
        const promise = connectWebSocket('ws://host/', this.options);
        await this.welcome();
        this.transport = await promise;
        this.heard = [];
        this.events = [];
        this.transport.hear((type, xml) => this.heard.push([type, xml]));
        this.transport.watch((...event) => this.events.push(event));
        return this.transport;
    }
}

const notify = (number, type = 't') => ({ notify: type, xml: `<${number}/>`, number });

test('requests and notifications pass in frames with numbers', async () => {
    const host = new Host();
    const transport = await host.connect();
    assert.deepEqual(host.socket.frames, [{ hello: { kind: 'mediaCollection', session: null, heard: 0 } }]);
    assert.deepEqual([transport.browserID, transport.handles], ['one', ['a.b']]);
    transport.raise('r', '<x/>');
    assert.deepEqual(host.socket.frames[1], { raise: 'r', xml: '<x/>', number: 1 });
    for (const frame of [notify(1), notify(1), notify(2, 'u'), { state: { tasks: [] } }, { unknown: true }])
        host.send(frame);
    assert.deepEqual(host.heard, [['t', '<1/>'], ['u', '<2/>']]);
    assert.deepEqual(host.events, [['state', { tasks: [] }]]);
    transport.close();
    assert.deepEqual(host.socket.closed, [1000, undefined]);
    host.socket.onclose({ code: 1000, reason: '' });
    await pause(30);
    assert.deepEqual([host.sockets.length, host.events.length], [1, 1], 'who closes is not told');
    assert.throws(() => transport.raise('r', ''), /closed/);
});

test('what comes before anybody listens is kept', async () => {
    const host = new Host();
    const promise = connectWebSocket('ws://host/', host.options);
    await host.welcome();
    host.send({ state: 1 });
    host.send({ notify: 'com.velmo.host.notification.AppExit', xml: '<n/>', number: 1 });
    const transport = await promise;
    await pause(5);
    const order = [];
    const tell = (what) => order.push(what);
    const panel = new Panel(transport, { state: tell, connection: tell });
    const exit = new Promise((resolve) => panel.on('AppExit', resolve));
    host.send({ notify: 'com.velmo.host.notification.AppExit', xml: '<n/>', number: 2 });
    assert.deepEqual(order, ['open', 1]);
    await exit;
});

test('a connection that is resumed has lost nothing', async () => {
    const host = new Host();
    const transport = await host.connect();
    for (const name of ['confirmed', 'lost'])
        transport.raise(name, '');
    host.send({ ...notify(1), heard: 1 });
    host.socket.onclose({ code: 1006, reason: '' });
    transport.raise('meanwhile', '');
    await host.welcome({ resumed: true, number: 1, heard: 1 });
    assert.deepEqual(host.socket.frames.map((frame) => frame.hello ?? frame.raise),
        [{ kind: 'mediaCollection', session: 's', heard: 1 }, 'lost', 'meanwhile']);
    host.send(notify(2));
    assert.deepEqual(host.heard.map(([, xml]) => xml), ['<1/>', '<2/>']);
    assert.deepEqual(host.events.map(([event]) => event), ['waiting', 'open']);
});

test('a connection that begins anew tells that there is a gap', async () => {
    const host = new Host();
    const transport = await host.connect();
    transport.raise('lost', '');
    host.socket.onclose({ code: 1006, reason: '' });
    await host.welcome({ session: 'another', number: 7 });
    host.send(notify(8));
    assert.equal(host.socket.frames.length, 1, 'what was raised before is not raised into another session');
    assert.deepEqual(host.events.map(([event]) => event), ['waiting', 'open', 'gap']);
    assert.deepEqual(host.heard, [['t', '<8/>']]);
});

test('frames that make no sense end the connection, not the session', async () => {
    const host = new Host();
    await host.connect();
    const frames = ['', '{', 'null', '[1', notify(5), { notify: 't', xml: 5, number: 1 },
        { notify: 't', xml: '', number: '1' }, { welcome: {} }, { welcome: { session: 's', handles: [] } },
        { welcome: { session: 's', number: 5, resumed: true } }];
    for (const frame of frames) {
        host.send(frame);
        assert.equal(host.socket.closed?.[0], 4100, JSON.stringify(frame));
        host.socket.onclose({ code: 4100, reason: '' });
        host.send(notify(1));
        assert.deepEqual(host.heard, [], 'nothing is taken from a connection that is over');
        await host.welcome({ resumed: true });
    }
    await pause(30);
    assert.equal(host.sockets.length, frames.length + 1, 'each is followed by one connection');
    host.send(notify(1));
    assert.equal(host.heard.length, 1);
});

test('attempts end', async () => {
    for (const [code, reason, options] of [[1000, 'the host ended', {}], [1008, 'not admitted', {}],
        [4001, 'taken over', {}], [1006, '', { giveUpAfter: 60 }]]) {
        const host = new Host(options);
        const transport = await host.connect();
        host.socket.onclose({ code, reason });
        for (let last; last !== host.socket && host.events.at(-1)[0] !== 'closed';) {
            last = host.socket;
            while (last === host.socket && host.events.at(-1)[0] !== 'closed')
                await pause(1);
            host.socket.onclose({ code, reason });
        }
        const [event, why] = host.events.at(-1);
        assert.ok(event === 'closed' && why.startsWith(reason || 'no connection for'), why);
        const attempts = host.sockets.length;
        assert.ok((code === 1006 ? attempts > 2 : attempts === 1) && attempts < 30, `${attempts} sockets`);
        assert.throws(() => transport.raise('r', ''), /closed/);
    }
    const never = new Host();
    const promise = connectWebSocket('ws://host/', never.options);
    never.socket.onclose({ code: 1008, reason: 'no' });
    await assert.rejects(promise, /no connection: no/);
    const deaf = new Host({ giveUpAfter: 60 });  // its sockets neither open nor close
    await assert.rejects(connectWebSocket('ws://host/', deaf.options), /no connection.*: no welcome/);
    assert.ok(deaf.sockets.length > 1 && deaf.sockets.every(({ closed }) => closed[0] === 4100));
    const socket = () => { throw new Error('bad address'); };
    await assert.rejects(connectWebSocket('', { socket }), /bad address/);
});

test('what waits is bounded', async () => {
    const host = new Host();
    const transport = await host.connect();
    host.socket.onclose({ code: 1006, reason: '' });
    for (let i = 0; i < 1024; ++i)
        transport.raise('r', '');
    assert.throws(() => transport.raise('r', ''), /1024 requests wait/);
    transport.close();

    const deaf = new Host();
    const promise = connectWebSocket('ws://host/', deaf.options);
    await deaf.welcome();
    const silent = await promise;
    for (let i = 1; i < 3000; ++i)
        deaf.send(notify(i));
    const events = [];
    silent.watch((event) => events.push(event));
    silent.hear(() => events.push('t'));
    assert.equal(events[0], 'gap');
    assert.ok(events.length <= 1024);
});

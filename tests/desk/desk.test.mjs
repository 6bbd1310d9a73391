// The client against the running desk, over sockets and HTTP as a browser has them.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { randomBytes } from 'node:crypto';
import http from 'node:http';
import { after, before, test } from 'node:test';
import { Panel, connectWebSocket } from '../../panels/client/index.js';

let desk;
let address;
let cookie;
const panels = [];

/** Asks the desk at loopback by its name, as a browser does. */
function ask(path, options = {}) {
    return http.request({
        host: '127.0.0.1',
        port: address.port,
        path,
        ...options,
        headers: { Host: address.host, Origin: address.origin, ...options.headers },
    });
}

const answerTo = (request) => new Promise((resolve, reject) =>
    request.on('response', resolve).on('error', reject).end());

/** As much of a browser's WebSocket as the client uses; short texts only. */
class Socket {
    #stream;
    #bytes = Buffer.alloc(0);
    #close = [1006, ''];

    constructor() {
        const request = ask('/socket', { headers: { Cookie: cookie, Connection: 'Upgrade', Upgrade: 'websocket',
            'Sec-WebSocket-Version': '13', 'Sec-WebSocket-Key': randomBytes(16).toString('base64') } });
        request.on('upgrade', (_, stream, head) => {
            this.#stream = stream;
            stream.on('data', (bytes) => this.#take(bytes)).on('error', () => {});
            stream.on('close', () => this.onclose({ code: this.#close[0], reason: this.#close[1] }));
            this.onopen();
            this.#take(head);
        }).on('response', () => this.onclose({ code: 1006, reason: '' })).on('error', () => {}).end();
    }

    send(text) {
        this.#write(1, Buffer.from(text));
    }

    close(code, reason = '') {
        this.#write(8, Buffer.concat([Buffer.from([code >> 8, code & 255]), Buffer.from(reason)]));
    }

    cut() {
        this.#stream.destroy();
    }

    #write(opcode, payload) {
        const isShort = payload.length < 126;
        const head = Buffer.alloc(isShort ? 6 : 8); // masked with zeros
        head[0] = 0x80 | opcode;
        head[1] = 0x80 | (isShort ? payload.length : 126);
        if (!isShort) head.writeUInt16BE(payload.length, 2);
        this.#stream?.write(Buffer.concat([head, payload]));
    }

    #take(bytes) {
        this.#bytes = Buffer.concat([this.#bytes, bytes]);
        for (;;) {
            const [data, short] = [this.#bytes, this.#bytes[1] & 127];
            const start = short === 126 ? 4 : 2;
            if (data.length < start) return;
            const length = start === 2 ? short : data.readUInt16BE(2);
            if (data.length < start + length) return;
            const payload = data.subarray(start, start + length);
            this.#bytes = data.subarray(start + length);
            if ((data[0] & 15) === 8) {
                this.#close = [payload.readUInt16BE(0), payload.toString('utf8', 2)];
                this.#write(8, payload);
            } else {
                this.onmessage({ data: payload.toString() });
            }
        }
    }
}

async function open(kind) {
    const sockets = [];
    const transport = await connectWebSocket('ws://desk/socket', { kind, firstDelay: 10, longestDelay: 2000,
        socket: () => sockets[sockets.push(new Socket()) - 1] });
    const events = [];
    const states = [];
    const panel = new Panel(transport, { kind, timeout: 10000, connection: (...event) => events.push(event),
        state: (state) => states.push(state) });
    panels.push(panel);
    return { panel, transport, sockets, events, states };
}

async function until(holds) {
    while (!holds())
        await new Promise((resolve) => setTimeout(resolve, 5));
}

before(async () => {
    desk = spawn(process.env.DESK, [], { stdio: ['ignore', 'pipe', 'inherit'] });
    let printed = '';
    for await (const text of desk.stdout) {
        printed += text;
        if (printed.includes('\n')) break;
    }
    address = new URL(/http:\S+/.exec(printed)[0]);
    const token = new URLSearchParams(address.hash.slice(1)).get('token');
    const session = await answerTo(ask('/session', { method: 'POST', headers: { 'Desk-Token': token } }));
    cookie = session.headers['set-cookie'][0].split(';')[0];
});

after(async () => {
    for (const panel of panels)
        panel.close();
    if (desk.exitCode === null) {
        desk.kill('SIGINT');
        await new Promise((resolve) => desk.once('exit', resolve));
    }
});

test('each panel gets its answers and only those', { timeout: 60000 }, async () => {
    const [one, two, collection] = [await open('library'), await open('library'), await open('mediaCollection')];
    assert.notEqual(one.transport.browserID, two.transport.browserID);
    await until(() => one.states.at(-1)?.panels.length === 3);
    const news = [];
    for (const { panel } of [one, two, collection])
        panel.on('*', (_, type) => news.push(type));

    // both connectors answer it, each to whom the request names
    const answers = await Promise.all([one, two, collection].map(({ panel }) => panel.request('OpenIngestDialog')));
    assert.deepEqual(answers.map(({ header }) => header.browserID),
        [one.transport.browserID, two.transport.browserID, 'MediaCollection']);

    // the media collection's connector answers it
    const assetMediaInfoList = [{ mediaPath: '/a.mov', assetMediaType: 1 }];
    await assert.rejects(two.panel.request('SelectAssets'), { code: 'unhandled' });
    const { result } = await collection.panel.request('ReadXMPFromCache', { assetMediaInfoList });
    assert.equal(result, 'ERROR');
    assert.equal(await one.panel.request('ExitApp', { allowExit: 1 }), null);
    assert.deepEqual(news, []);
});

test('a panel goes on when its connection is lost', { timeout: 60000 }, async () => {
    const { panel, transport, sockets, events } = await open('library');
    const browserID = transport.browserID;
    sockets[0].cut();
    const answer = panel.request('OpenIngestDialog');
    assert.equal((await answer).header.browserID, browserID);
    assert.deepEqual(events.map(([event]) => event), ['open', 'waiting', 'open']);
});

test('the desk ends with a word, and cleanly', { timeout: 60000 }, async () => {
    const { events } = await open('library');
    desk.kill('SIGINT');
    assert.equal(await new Promise((resolve) => desk.once('exit', resolve)), 0);
    await until(() => events.at(-1)[0] === 'waiting');
    assert.match(events.at(-1)[1], /the desk ends/);
});

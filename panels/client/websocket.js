// A transport to a host that speaks the frames of docs/panel-client.md over a WebSocket.

import { Connection } from './connection.js';

const mostWaiting = 1024; // frames, in either direction

class SocketTransport {
    #connection;
    #session = null;
    #heard = 0; // the number of the last notification
    #sent = 0;
    #outbox = []; // what the host has not confirmed
    #early = []; // what comes before somebody listens
    #listener;
    #observer;
    #ready;

    constructor({ kind = 'library', ...options }, ready) {
        this.#ready = ready;
        this.#connection = new Connection(options, {
            hello: () => ({ hello: { kind, session: this.#session, heard: this.#heard } }),
            welcome: (welcome) => this.#welcome(welcome),
            take: (frame) => this.#take(frame),
            waiting: (reason) => this.#pass(() => this.#observer?.('waiting', reason)),
            closed: (reason) => {
                this.#ready.reject(new Error(`no connection: ${reason}`));
                this.#pass(() => this.#observer?.('closed', reason));
            },
        });
    }

    raise(type, xml) {
        if (this.#connection.isOver) throw new Error('the connection is closed');
        if (this.#outbox.length >= mostWaiting)
            throw new Error(`${mostWaiting} requests wait for the connection`);
        const frame = JSON.stringify({ raise: type, xml, number: ++this.#sent });
        this.#outbox.push({ number: this.#sent, frame });
        if (this.#connection.isWelcome) this.#connection.send(frame);
    }

    hear(listener) {
        this.#listener = listener;
        for (const pass of this.#early.splice(0)) pass();
        return () => {
            this.#listener = () => {};
        };
    }

    watch(observer) {
        this.#observer = observer;
        return () => {
            this.#observer = undefined;
        };
    }

    close() {
        this.#connection.close();
    }

    /** @returns {string | undefined} What is wrong with the frame. */
    #take(frame) {
        if (Number.isSafeInteger(frame.heard))
            this.#outbox = this.#outbox.filter(({ number }) => number > frame.heard);
        if (frame.state !== undefined) this.#pass(() => this.#observer?.('state', frame.state));
        return frame.notify === undefined ? undefined : this.#notified(frame);
    }

    #notified({ notify, xml, number }) {
        if (typeof notify !== 'string' || typeof xml !== 'string' || !Number.isSafeInteger(number))
            return 'a notification without type, text or number';
        if (number <= this.#heard) return undefined; // sent again
        if (number > this.#heard + 1) return `${number} behind ${this.#heard}`;
        this.#heard = number;
        this.#connection.confirm();
        this.#pass(() => this.#listener(notify, xml));
        return undefined;
    }

    #welcome({ session, browserID, handles = [], resumed, number, heard }) {
        if (typeof session !== 'string' || !Number.isSafeInteger(number) || !Array.isArray(handles))
            return 'a welcome without session, number or handles';
        if (resumed === true && number !== this.#heard) return 'a welcome that resumes elsewhere';
        const isGap = this.#session !== null && resumed !== true;
        this.#session = session;
        this.browserID = browserID;
        this.handles = handles;
        this.#heard = number;
        this.#outbox = isGap ? [] : this.#outbox.filter((waiting) => waiting.number > (heard ?? 0));
        for (const { frame } of this.#outbox) this.#connection.send(frame);
        this.#ready.resolve(this);
        this.#pass(() => this.#observer?.('open'));
        if (isGap) this.#pass(() => this.#observer?.('gap'));
        return undefined;
    }

    /** Passes something on, or keeps it until somebody listens; too much of it is lost, as on the way. */
    #pass(pass) {
        if (this.#listener !== undefined) return pass();
        if (this.#early.length >= mostWaiting) this.#early = [() => this.#observer?.('gap')];
        this.#early.push(pass);
    }
}

/**
 * @param {string} url
 * @param {{kind?: string, socket?: (url: string) => WebSocket, firstDelay?: number, longestDelay?: number,
 *     giveUpAfter?: number}} [options] What makes a socket; milliseconds between attempts and until the end.
 * @returns {Promise<SocketTransport>} Once the host has said welcome; rejected when it does not come to that.
 */
export function connectWebSocket(url, options = {}) {
    return new Promise((resolve, reject) => {
        new SocketTransport({ ...options, url }, { resolve, reject });
    });
}

// What the desk's own pages need of it: what passes, how things stand, and commands. They are no panels: they
// speak other frames over the socket that panels use.

import { Connection } from '../client/connection.js';
import { readFrame, writeJson } from './json.js';

const longestAnswer = 60000; // milliseconds; saving plays what is saved

/** Why a command did not come about: `code` is 'refused', 'disconnected' or 'timeout'. */
export class DeskError extends Error {
    constructor(code, message) {
        super(message);
        this.name = 'DeskError';
        this.code = code;
    }
}

class Desk {
    #connection;
    #tell;
    #timeout;
    #heard = 0; // the number of the last entry
    #asked = 0; // the number of the last command on this connection
    #waiting = new Map(); // commands by their numbers

    constructor(options, tell) {
        this.#tell = tell;
        this.#timeout = options.timeout ?? longestAnswer;
        this.#connection = new Connection(
            { ...options, parse: readFrame },
            {
                hello: () => ({
                    hello: { kind: 'desk', heard: this.#heard, traffic: tell.traffic !== undefined },
                }),
                welcome: (welcome) => this.#welcome(welcome),
                take: (frame) => this.#take(frame),
                waiting: (reason) => this.#lost('waiting', reason),
                closed: (reason) => this.#lost('closed', reason),
            },
        );
    }

    /**
     * @param {string} name A command.
     * @param {object} [content] What it is about; a bigint is a number.
     * @returns {Promise<unknown>} What the desk says; it settles in any case.
     * @throws {DeskError}
     */
    do(name, content = {}) {
        if (!this.#connection.isWelcome)
            return Promise.reject(
                new DeskError(
                    'disconnected',
                    `${name} was not sent: there is no connection to the desk; try again when it is back`,
                ),
            );
        const number = ++this.#asked;
        this.#connection.send(writeJson({ do: name, with: content, number }));
        return new Promise((resolve, reject) => {
            const late = () =>
                this.#settle(number)?.reject(
                    new DeskError(
                        'timeout',
                        `${name}: the desk said nothing for ${this.#timeout / 1000} s; ` +
                            'look in the traffic view whether it came about',
                    ),
                );
            this.#waiting.set(number, { name, resolve, reject, timer: setTimeout(late, this.#timeout) });
        });
    }

    close() {
        this.#connection.close();
        this.#fail('the page is closed');
    }

    #welcome({ kind, number }) {
        if (kind !== 'desk' || !Number.isSafeInteger(number)) return 'a welcome for somebody else';
        this.#asked = 0;
        if (number < this.#heard) {
            this.#heard = 0; // of another desk, which hands on all it has
            this.#tell.gap?.('The desk was started anew: numbers begin at 1 again.');
        }
        this.#tell.connection?.('open');
        return undefined;
    }

    #take({ traffic, state, done, ...rest }) {
        if (traffic !== undefined && !Array.isArray(traffic)) return 'traffic is no list';
        if (traffic !== undefined) {
            const fault = this.#hear(traffic);
            if (fault !== undefined) return fault;
        }
        if (state !== undefined) this.#tell.state?.(state);
        if (done !== undefined) this.#done(done, rest);
        return undefined;
    }

    #hear(traffic) {
        const fresh = traffic.filter((entry) => !(entry?.number <= this.#heard));
        for (const { number, line } of fresh.map((entry) => entry ?? {})) {
            if (!Number.isSafeInteger(number) || typeof line !== 'object' || line === null)
                return 'an entry without number or line';
            const missing = number - this.#heard - 1;
            if (missing < 0) return 'entries out of order';
            if (missing > 0)
                this.#tell.gap?.(
                    `${missing} ${missing === 1 ? 'entry' : 'entries'} before number ${number} ` +
                        `${missing === 1 ? 'is' : 'are'} not kept by the desk any more.`,
                );
            this.#heard = number;
        }
        if (fresh.length === 0) return undefined;
        this.#connection.confirm();
        this.#tell.traffic?.(fresh);
        return undefined;
    }

    #done(number, { value, error }) {
        const command = this.#settle(number);
        if (error === undefined) command?.resolve(value);
        else command?.reject(new DeskError('refused', String(error)));
    }

    #settle(number) {
        const command = this.#waiting.get(number);
        clearTimeout(command?.timer);
        this.#waiting.delete(number);
        return command;
    }

    #lost(event, reason) {
        this.#fail(reason);
        this.#tell.connection?.(event, reason);
    }

    #fail(reason) {
        for (const number of [...this.#waiting.keys()]) {
            const { name, reject } = this.#settle(number);
            reject(new DeskError('disconnected', `${name} may be lost: ${reason}`));
        }
    }
}

/**
 * @param {string} url
 * @param {{traffic?: (entries: object[]) => void, state?: (state: object) => void,
 *     gap?: (text: string) => void, connection?: (event: string, reason?: string) => void}} tell Who hears of
 *     traffic, of the state, of what is missing, and of the connection: 'open', 'waiting', 'closed'.
 * @param {object} [options] As `connectWebSocket` takes them; and `timeout` of commands.
 * @returns {Desk} At once: the connection is told of.
 */
export const connectDesk = (url, tell, options = {}) => new Desk({ ...options, url }, tell);

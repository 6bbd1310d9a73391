import { build } from './build.js';
import { PanelError } from './errors.js';
import { newGuid, zeroGuid } from './guid.js';
import { parseNotification } from './parse.js';
import { Pending } from './pending.js';
import * as rules from './rules.js';
import { Task } from './task.js';

const mostSettled = 256;
const longestTimeout = 0x7fffffff; // of a timer

/** A panel's end of the protocol. docs/panel-client.md says what it does. */
export class Panel {
    #transport;
    #kind;
    #ownID;
    #timeout;
    #tell;
    #pending = new Map(); // by message id
    #settled = new Set(); // the last message ids that were answered or given up
    #handlers = new Map(); // by identifier, '*' for all
    #tasks = new Map(); // sets of tasks by task id
    #closed;
    #stop;

    constructor(
        transport,
        { kind = 'library', browserID, timeout = 30000, state, connection, problem } = {},
    ) {
        if (!rules.kinds.includes(kind))
            throw new PanelError(
                'invalid',
                `a panel's kind is one of ${rules.kinds.join(', ')}, not ${kind}`,
            );
        this.#transport = transport;
        this.#kind = kind;
        this.#ownID = browserID;
        this.#timeout = checkedTimeout(timeout);
        this.#tell = { state, connection, problem: problem ?? ((error) => console.error(error)) };
        this.#stop = [
            // what was kept for a listener comes at once, events of the connection among it
            transport.watch?.((event, detail) => this.#watch(event, detail)),
            transport.hear((type, xml) => this.#hear(type, xml)),
        ];
    }

    /** What the host calls this panel; undefined where nobody said. */
    get browserID() {
        return this.#kind === 'mediaCollection'
            ? rules.collectionID
            : (this.#ownID ?? this.#transport.browserID);
    }

    /**
     * @param {string} name The request's identifier, or the last part of it.
     * @param {object} [content] A record, whose members may be left out; fresh ids come into its header.
     * @param {{signal?: AbortSignal, timeout?: number}} [options]
     * @returns {Promise<object | null>} The answer; null when nobody answers by design.
     */
    async request(name, content = {}, { signal, timeout = this.#timeout } = {}) {
        const request = rules.findRequest(name);
        if (request === undefined) throw new PanelError('invalid', `there is no request ${name}`);
        if (typeof content !== 'object' || content === null)
            throw new PanelError('invalid', `${request.identifier} takes an object`);
        const header = this.#headerOf(content);
        try {
            return await this.#raise(request, { ...content, header }, signal, checkedTimeout(timeout));
        } catch (error) {
            // What is answered is no cancel, whose own fate says nothing of the task.
            if (request.answers !== undefined) this.#failTasks(error, header.taskID);
            throw error;
        }
    }

    #headerOf(content) {
        const {
            browserID = this.browserID ?? '',
            msgID = newGuid(),
            taskID = newGuid(),
            ...rest
        } = content.header ?? {};
        return { browserID, msgID, taskID, ...rest };
    }

    #raise(request, message, signal, timeout) {
        const fail = (code, what, cause) => {
            throw new PanelError(code, what, { request: request.identifier, cause });
        };
        if (this.#closed !== undefined) fail('disconnected', this.#closed);
        if (signal?.aborted) fail('aborted', `${request.identifier} was aborted`, signal.reason);
        const text = this.#textOf(request, message, fail);
        const { browserID, msgID } = message.header;
        const answer = rules.answerOf(request, this.#kind, this.browserID, browserID);
        if (answer !== undefined && this.#pending.has(msgID.toLowerCase()))
            fail('invalid', `a request with the msgID ${msgID} waits for its answer already`);
        const promise =
            answer === undefined ? null : this.#await(request, message.header, answer, signal, timeout);
        try {
            this.#transport.raise(request.identifier, text);
        } catch (cause) {
            const what = `${request.identifier} could not be raised: ${cause?.message ?? cause}`;
            if (promise === null) fail('disconnected', what, cause);
            this.#pending.get(msgID.toLowerCase())?.fail('disconnected', what, cause);
        }
        return promise;
    }

    /** @returns {string} The text of a request that somebody handles, with all that it needs. */
    #textOf(request, message, fail) {
        const needs = rules.needsOf(request, this.#kind);
        const isHosts = [...(this.#transport.handles ?? [])].some(
            (name) => rules.findRequest(name) === request,
        );
        if (needs === undefined && !isHosts)
            fail(
                'unhandled',
                `nobody handles ${request.identifier}; a host that does says so in its transport`,
            );
        let built;
        try {
            built = build(message);
        } catch (error) {
            error.request = request.identifier;
            throw error;
        }
        const lacking = (needs ?? []).filter((path) => !built.places.has(path));
        if (lacking.length > 0) fail('needs', `${request.identifier} needs ${lacking.at(-1)}`);
        return built.text;
    }

    #await(request, header, answer, signal, timeout) {
        const key = header.msgID.toLowerCase();
        const pending = new Pending(request, answer, signal, timeout, {
            settled: () => {
                this.#pending.delete(key);
                this.#remember(key);
            },
            aborted: () => this.#cancel(request, header),
        });
        this.#pending.set(key, pending);
        return pending.promise;
    }

    #cancel(request, header) {
        if (request.cancel === undefined) return;
        try {
            this.#transport.raise(request.cancel, build({ header }).text);
        } catch (error) {
            this.#problem(error, { type: request.cancel });
        }
    }

    #remember(msgID) {
        this.#settled.add(msgID);
        if (this.#settled.size > mostSettled) this.#settled.delete(this.#settled.values().next().value);
    }

    /**
     * Follows a task that is known by its id, from now on.
     * @param {string} id
     * @returns {Task}
     */
    task(id) {
        const key = id.toLowerCase();
        const task = new Task(() => {
            const tasks = this.#tasks.get(key);
            tasks?.delete(task);
            if (tasks?.size === 0) this.#tasks.delete(key);
        });
        if (!this.#tasks.has(key)) this.#tasks.set(key, new Set());
        this.#tasks.get(key).add(task);
        if (this.#closed !== undefined) task.fail(new PanelError('disconnected', this.#closed));
        return task;
    }

    #failTasks(error, id) {
        const keys = id === undefined ? [...this.#tasks.keys()] : [String(id).toLowerCase()];
        for (const key of keys) for (const task of [...(this.#tasks.get(key) ?? [])]) task.fail(error);
    }

    /**
     * @param {string} name A notification's identifier, the last part of it, or '*'.
     * @param {(message: object, type: string) => void} handler
     * @returns {() => void} Ends it.
     */
    on(name, handler) {
        const type = name === '*' ? name : rules.findNotification(name)?.identifier;
        if (type === undefined) throw new PanelError('invalid', `there is no notification ${name}`);
        const entry = { handler };
        if (!this.#handlers.has(type)) this.#handlers.set(type, new Set());
        this.#handlers.get(type).add(entry);
        return () => this.#handlers.get(type).delete(entry);
    }

    /** Ends the panel: what still waits is rejected, nothing is heard any more, the transport is closed. */
    close() {
        if (this.#closed === undefined) this.#end('the panel was closed');
        for (const stop of this.#stop.splice(0)) stop?.();
        this.#transport.close?.();
    }

    #end(reason) {
        this.#closed = reason;
        this.#disconnect(reason);
    }

    #disconnect(reason) {
        for (const pending of [...this.#pending.values()])
            pending.fail('disconnected', `${pending.request.identifier}: ${reason}`);
        this.#failTasks(new PanelError('disconnected', reason));
    }

    /** What the transport says of the connection, see docs/panel-client.md. */
    #watch(event, detail) {
        if (this.#closed !== undefined) return;
        if (event === 'state') return this.#call(this.#tell.state, detail);
        if (event === 'closed') this.#end(`the connection is closed: ${detail ?? 'no reason given'}`);
        if (event === 'gap') {
            this.#disconnect('notifications were lost on the way');
            this.#askAgain();
        }
        this.#call(this.#tell.connection, event, detail);
    }

    /** What was lost cannot be had again, but a host that answers this tells how things stand. */
    #askAgain() {
        const name = 'requestInitInfo';
        this.request(name).then(
            (message) => this.#deliver(rules.findRequest(name).answers[0], message),
            (error) => {
                if (error.code !== 'unhandled') this.#problem(error, {});
            },
        );
    }

    #hear(type, xml) {
        if (this.#closed !== undefined || rules.findNotification(type)?.identifier !== type) return;
        let message;
        try {
            message = parseNotification(type, xml);
        } catch (error) {
            this.#hearGarbled(type, xml, error);
            return;
        }
        const { browserID, msgID } = message.header;
        const pending = this.#pending.get(msgID);
        if (pending?.isAnsweredBy(type, browserID)) {
            this.#tellTasks(type, message);
            pending.answer(message);
        } else if (this.#isOurs(type, message.header)) {
            pending?.heardOf(type);
            this.#tellTasks(type, message);
            this.#deliver(type, message);
        } else if (rules.takes(this.#kind, type, browserID) && !this.#settled.has(msgID))
            this.#tellTasks(type, message); // the answer to a request from before this page
    }

    /** An answer that cannot be read will not come again. */
    #hearGarbled(type, xml, error) {
        const { browserID, msgID } = error.header ?? {};
        const pending = this.#pending.get(msgID);
        if (pending?.isAnsweredBy(type, browserID))
            pending.fail('garbled', `the answer to ${pending.request.identifier} cannot be read`, error);
        this.#problem(error, { type, xml });
    }

    /** Of answers that come as news, too, those that answer somebody are not ours. */
    #isOurs(type, { browserID, msgID }) {
        if (!rules.takes(this.#kind, type, browserID)) return false;
        if (!rules.isAnswer(type)) return true;
        const own = this.browserID;
        const namesAnother =
            own !== undefined && this.#kind === 'library' && browserID !== '' && browserID !== own;
        return rules.isNews(type, browserID) && !this.#settled.has(msgID) && !namesAnother;
    }

    #tellTasks(type, message) {
        if (this.#tasks.size === 0) return;
        const step = { name: rules.shortName(type), type, message };
        for (const id of new Set([message.header.taskID, ...(message.taskIDList ?? [])]))
            if (id !== zeroGuid) for (const task of [...(this.#tasks.get(id) ?? [])]) task.tell(step);
    }

    #deliver(type, message) {
        for (const key of [type, '*'])
            for (const { handler } of [...(this.#handlers.get(key) ?? [])])
                this.#call(handler, message, type);
    }

    /** What a page throws harms nobody else. */
    #call(handler, ...args) {
        try {
            const result = handler?.(...args);
            result?.then?.(undefined, (error) => this.#problem(error, { type: args[1] }));
        } catch (error) {
            this.#problem(error, { type: args[1] });
        }
    }

    #problem(error, details) {
        try {
            this.#tell.problem(error, details);
        } catch (another) {
            console.error(another);
        }
    }
}

function checkedTimeout(timeout) {
    if (typeof timeout !== 'number' || !(timeout > 0) || timeout > longestTimeout)
        throw new PanelError(
            'invalid',
            `a timeout is a number of milliseconds from 1 to ${longestTimeout}, not ${timeout}`,
        );
    return timeout;
}

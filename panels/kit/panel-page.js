// What the pages of panels do alike: the connection and what is said of it, requests as tasks, what the host
// lists.

import { PanelError } from '../client/errors.js';
import { newGuid } from '../client/guid.js';
import { findRequest, shortName } from '../client/rules.js';
import { noConnection } from './actions.js';
import { setObstacle } from './dialog.js';
import { element, setText } from './elements.js';
import { errorText } from './format.js';
import { outcomeOf, outcomeOfError, statusTexts, workTitle } from './outcome.js';
import { beginSession, connectPanel } from './session.js';
import { TaskStrip } from './task-strip.js';
import { TaskList } from './tasks.js';

const longWork = 600000; // milliseconds without a word, for work that takes its time
const shortWork = 60000;
const patience = 3000; // until it is told that nobody answers
const silentWork = 10000; // for what hosts need not answer

const askedText = (canAsk) =>
    canAsk ? 'The host was asked how things stand.' : 'Look at the host, and read again what matters.';

const connectionTexts = {
    open: ({ pageID }) => `Connected as ${pageID}.`,
    waiting: ({ detail }) =>
        `The connection is lost and made again${detail ? `: ${detail}` : ''}. ` +
        'What you see may be out of date; actions wait.',
    gap: ({ canAsk }) =>
        `Connected again, but news was lost: what you see may be out of date. ${askedText(canAsk)}`,
    garbled: ({ canAsk }) =>
        `The host told what cannot be read: what you see may be out of date. ${askedText(canAsk)}`,
    anew: ({ pageID }) => `Connected as ${pageID}. The host has told how things stand now.`,
    late: () => 'Connecting … The host does not answer yet. This page goes on trying.',
    empty: ({ detail }) => `Connected, but what there is did not come: ${detail} Reload to ask again.`,
    closed: ({ detail, pageID }) =>
        pageID === undefined ? detail : `The connection is closed: ${detail} What you see stays.`,
};

export class PanelPage {
    tasks = new TaskList((ended) => this.#tasksChanged(ended));
    #kind;
    #on;
    #panel;
    #strip;
    #isUsable = false;
    #isStale = false; // news was lost, and nobody has told how things stand
    #isAsking = false;
    #connection = document.getElementById('connection');
    #reload = element('button', { type: 'button', textContent: 'Reload', onclick: () => location.reload() });

    /**
     * @param {'library' | 'mediaCollection'} kind
     * @param {{changed: () => void, state?: (state: object) => void, news?: (name: string, message: object)
     *     => void, unknown: string}} on `changed`: tasks or the connection are others; `unknown`: what a page
     *     does not know of a host that lists nothing.
     */
    constructor(kind, on) {
        this.#kind = kind;
        this.#on = on;
        this.#strip = new TaskStrip(document.getElementById('tasks'), {
            cancel: (task) => this.#cancel(task),
            canCancel: (task) => this.#isUsable && this.#cancelOf(task) !== undefined,
            clear: (task) => this.tasks.clear(task?.id),
        });
        setObstacle(() =>
            this.#isUsable ? undefined : `${noConnection} What you entered stays: try again when it is back.`,
        );
    }

    /** Whether requests can be raised now. */
    get isUsable() {
        return this.#isUsable;
    }

    /** @returns {string | undefined} What to wait for before the same is asked for the same files again. */
    busyWith(what, some) {
        const same = this.tasks.running.find(
            (task) => task.what === what && some.some(({ path }) => task.paths.includes(path)),
        );
        return same && `Wait until it is done: ${same.title}.`;
    }

    get panel() {
        return this.#panel;
    }

    /** Connects, and asks what there is, where the host answers that. */
    async begin() {
        this.#strip.show([]);
        const late = setTimeout(() => this.#say('late'), patience);
        try {
            await beginSession();
            this.#panel = await connectPanel(this.#kind, {
                connection: (event, detail) => this.#connectionChanged(event, detail),
                state: (state) => this.#stateCame(state),
                problem: (error, { xml }) => this.#problem(error, xml !== undefined),
            });
        } catch (error) {
            return this.#connectionChanged('closed', error.message);
        } finally {
            clearTimeout(late);
        }
        this.#panel.on('*', (message, type) => this.#heard(shortName(type), message));
        this.#strip.note = this.#on.unknown;
        this.#connectionChanged('open');
        this.#ask();
    }

    /** Asks what there is. */
    async #ask() {
        if (!this.#canAsk || this.#isAsking) return;
        this.#isAsking = true;
        try {
            this.#heard('requestInitInfoStatus', await this.#panel.request('requestInitInfo'));
        } catch (error) {
            this.#say('empty', errorText(error));
        }
        this.#isAsking = false;
    }

    /** A notification that cannot be read is lost, and nobody tells it again. */
    #problem(error, isNews) {
        console.error(error);
        if (!isNews) return;
        this.#isStale = true;
        this.#say('garbled');
        this.#ask();
    }

    get #canAsk() {
        const asked = findRequest('requestInitInfo');
        return [...(this.#panel?.handles ?? [])].some((name) => findRequest(name) === asked);
    }

    #heard(name, message) {
        if (name === 'requestInitInfoStatus' && this.#isStale) {
            this.#isStale = false;
            this.#say('anew');
        }
        this.tasks.hear(name, message);
        this.#on.news?.(name, message);
    }

    #stateCame(state) {
        if (Array.isArray(state?.tasks)) {
            this.#strip.note = '';
            this.tasks.heardState(state.tasks, { kind: this.#kind, pageID: this.#panel?.pageID });
        }
        this.#on.state?.(state ?? {});
    }

    #connectionChanged(event, detail) {
        this.#isUsable = event === 'open' || event === 'gap';
        this.#isStale ||= event === 'gap';
        if (event === 'gap') this.tasks.gap();
        this.#say(event === 'open' && this.#isStale ? 'gap' : event, detail);
        this.#tasksChanged();
    }

    #say(event, detail) {
        const { pageID } = this.#panel ?? {};
        this.#connection.dataset.event = event;
        setText(this.#connection, connectionTexts[event]({ detail, pageID, canAsk: this.#canAsk }));
        if (event === 'closed' || event === 'empty') this.#connection.after(this.#reload);
    }

    #tasksChanged(ended) {
        const { all } = this.tasks;
        this.#strip.show(all);
        if (ended !== undefined && ended.status !== 'running')
            this.#strip.announce(`${ended.title}: ${statusTexts[ended.status].toLowerCase()}.`);
        this.#on.changed();
    }

    #cancelOf(task) {
        if (task.cancel !== undefined) return task.cancel;
        const cancel = findRequest(task.what)?.cancel;
        if (cancel === undefined || task.msgID === undefined || task.by !== undefined) return undefined;
        return () => this.raise(cancel, { header: { taskID: task.id, msgID: task.msgID } });
    }

    async #cancel(task) {
        const problem = await this.#cancelOf(task)?.();
        if (problem !== undefined) this.#strip.announce(`${task.title}: not cancelled. ${problem}`);
    }

    /** Raises what nobody answers. @returns {Promise<string | undefined>} Why it could not be raised. */
    async raise(name, content) {
        try {
            await this.#panel.request(name, content);
            return undefined;
        } catch (error) {
            return errorText(error);
        }
    }

    /** Raises what hosts need not answer: only what keeps it from being sent is told. */
    async send(what, content, title) {
        const sent = this.#panel.request(what, content, { timeout: silentWork });
        this.#strip.announce(`${title}: sent.`);
        try {
            await sent;
        } catch (error) {
            if (error.code === 'timeout') return;
            const id = newGuid();
            this.tasks.begin({ id, what, title });
            this.tasks.end(id, outcomeOfError(error));
        }
    }

    /**
     * Raises a request as a task of the strip.
     * @param {string} what The request.
     * @param {object} content
     * @param {{title?: string, paths?: string[], isLong?: boolean, isSilent?: boolean}} [how] `isSilent`:
     *     hosts need not answer it; `judge`: reads the answer in place of `outcomeOf`.
     * @returns {Promise<{status: string, detail: string, items: object[], answer?: object}>} How it went.
     */
    async run(
        what,
        content,
        { title, paths = [], isLong = false, isSilent = false, judge = outcomeOf } = {},
    ) {
        const [id, msgID] = [newGuid(), newGuid()];
        const controller = new AbortController();
        const cancel = findRequest(what).cancel === undefined ? undefined : () => controller.abort();
        this.tasks.begin({
            ...{ id, msgID, what, title: title ?? workTitle(what), paths, cancel },
            isAwaited: true,
            isBrief: !isLong,
        });
        let outcome;
        try {
            if (!this.#isUsable) throw new PanelError('unsent', noConnection);
            const answer = await this.#panel.request(
                what,
                { ...content, header: { taskID: id, msgID } },
                { signal: controller.signal, timeout: isLong ? longWork : isSilent ? silentWork : shortWork },
            );
            outcome = { ...judge(what, answer ?? {}), answer };
        } catch (error) {
            outcome = outcomeOfError(error, { isSilent });
        }
        const task = this.tasks.all.find((other) => other.id === id);
        if (task !== undefined) task.isAwaited = false;
        this.tasks.end(id, outcome);
        return outcome;
    }
}

// The tasks that a panel knows of: those it began, those that are told to it, those that the host lists.
// Without DOM.

import { plural } from './format.js';
import { workTitle } from './outcome.js';

const mostEnded = 20;
const mostForgotten = 256;
const lostText = 'It ended, but the result did not reach this page. Look at the clips or at the host.';
const gapText = 'News of it was lost. Look at the host for how it goes.';

const isOver = ({ status }) => status !== 'running' && status !== 'paused';

/** @returns {string} What is being done, and how far it is. */
export function progressText({ what, status, percentage }) {
    if (status === 'paused') return `${workTitle(what)}: paused`;
    return percentage === null ? `${workTitle(what)}: running` : `${workTitle(what)}: ${percentage} %`;
}

function ingestDetail({ ready, copies, batches }) {
    const bins = [...new Set([...batches.values()].map(({ bin }) => bin).filter(Boolean))];
    const finished = [...batches.values()].filter(({ isDone }) => isDone).length;
    return [
        ready > 0 && `${plural(ready, 'clip')} ready`,
        copies > 0 && `${plural(copies, 'copy', 'copies')} ready`,
        batches.size > 1 && `batch ${Math.min(finished + 1, batches.size)} of ${batches.size}`,
        bins.length > 0 && `to ${bins.join(', ')}`,
    ]
        .filter(Boolean)
        .join(' · ');
}

/** A task that ended and begins again begins with nothing. */
const begin = (task) =>
    Object.assign(task, { status: 'running', percentage: null, ready: 0, copies: 0, batches: new Map() });

/** What notifications do to a task of ingest. */
const ingestSteps = {
    StartIngest: (task) => isOver(task) && begin(task),
    StartIngestBatch: (task, { batchID, targetBin }) => task.batches.set(batchID, { bin: targetBin }),
    IngestItemsReady: (task, { ingestItemList = [] }) => (task.ready += ingestItemList.length),
    BackupItemsReady: (task, { ingestItemList = [] }) => (task.copies += ingestItemList.length),
    FinishIngestBatch: (task, { batchID }) =>
        task.batches.set(batchID, { ...task.batches.get(batchID), isDone: true }),
    FinishIngest: (task) => (task.status = 'done'),
    CancelIngest: (task) => (task.status = 'cancelled'),
};

const pauses = { PauseIngest: 'paused', ResumeIngest: 'running' };

export class TaskList {
    #tasks = new Map(); // by id
    #forgotten = new Set(); // the last ids that ended and show no more
    #changed;

    /**
     * @param {(task?: object) => void} changed Called after each change, with the task that has just ended.
     */
    constructor(changed = () => {}) {
        this.#changed = changed;
    }

    /** @returns {object[]} What runs, then what ended, the newest first. */
    get all() {
        const tasks = [...this.#tasks.values()].reverse();
        return [...tasks.filter((task) => !isOver(task)), ...tasks.filter(isOver)];
    }

    get running() {
        return this.all.filter((task) => !isOver(task));
    }

    /** @returns {object | undefined} What is being done with a file. */
    at(path) {
        return this.running.find(({ paths }) => paths.includes(path));
    }

    /**
     * @param {{id: string, what: string, msgID?: string, title?: string, paths?: string[], cancel?: () =>
     *     void, isAwaited?: boolean, isBrief?: boolean}} task `isAwaited`: its end is told by the answer;
     *     `isBrief`: nobody needs it any more when it went well.
     */
    begin(task) {
        this.#add(task);
        this.#tell();
    }

    #add({ id, what, title = workTitle(what), paths = [], ...rest }) {
        const task = {
            id,
            what,
            title,
            paths,
            status: 'running',
            percentage: null,
            detail: '',
            items: [],
            ready: 0,
            copies: 0,
            batches: new Map(),
            ...rest,
        };
        this.#tasks.set(id, task);
        return task;
    }

    /** A request was answered, or will not be. */
    end(id, { status, detail, items = [] }) {
        const task = this.#tasks.get(id);
        if (task === undefined) return;
        Object.assign(task, { status, detail, items });
        // What it did shows elsewhere.
        if (task.isBrief && status === 'done' && detail === '') this.#forget(id);
        this.#over(task);
    }

    /** The host may list it for a moment longer. */
    #forget(id) {
        this.#tasks.delete(id);
        this.#forgotten.add(id);
        if (this.#forgotten.size > mostForgotten)
            this.#forgotten.delete(this.#forgotten.values().next().value);
    }

    #over(task) {
        task.cancel = undefined;
        const ended = [...this.#tasks.values()].filter(isOver);
        for (const old of ended.slice(0, Math.max(0, ended.length - mostEnded))) this.#tasks.delete(old.id);
        this.#tell(task);
    }

    #tell(ended) {
        this.#changed(ended);
    }

    /** @returns {boolean} Whether the notification is about tasks. */
    hear(name, message) {
        if (name in pauses) {
            for (const id of message.taskIDList ?? []) this.#pause(id, pauses[name]);
            this.#tell();
        } else if (name in ingestSteps) this.#ingest(name, message);
        else if (name.endsWith('Progress') && this.#tasks.has(message.header.taskID)) {
            this.#tasks.get(message.header.taskID).percentage = message.percentage ?? null;
            this.#tell();
        } else return false;
        return true;
    }

    #pause(id, status) {
        const task = this.#tasks.get(id);
        if (task !== undefined && !isOver(task)) task.status = status;
    }

    /** Where nobody tells of the end, files that are ready are no work that goes on. */
    #ingest(name, message) {
        const id = message.header.taskID;
        const isUnannounced = !this.#tasks.has(id) && name.endsWith('ItemsReady');
        const task = this.#tasks.get(id) ?? this.#add({ id, what: 'Ingest' });
        if (task.status === 'lost') task.status = 'running';
        const wasOver = isOver(task);
        if (isUnannounced) task.status = 'done';
        ingestSteps[name](task, message);
        task.detail = ingestDetail(task);
        if (isOver(task) && !wasOver) this.#over(task);
        else this.#tell();
    }

    /** What the host lists is so, whatever was heard; what it no longer lists is over. */
    heardState(listed, { kind, pageID }) {
        const own = listed.filter((task) => task.kind === undefined || task.kind === kind);
        for (const { taskID, msgID, what, by, percentage, isPaused } of own) {
            if (this.#forgotten.has(taskID)) continue;
            const known = this.#tasks.get(taskID);
            const task = known ?? this.#add({ id: taskID, msgID, what });
            const isBack = task.status === 'lost' || (task.what === 'Ingest' && known && !task.isListed);
            if (isOver(task) && !isBack) continue;
            task.status = isPaused ? 'paused' : 'running';
            if (task.what !== 'Ingest' || isBack) task.detail = ingestDetail(task);
            Object.assign(task, { isListed: true, percentage: percentage ?? task.percentage });
            task.by = by === pageID ? undefined : by || undefined;
        }
        const ids = new Set(own.map(({ taskID }) => taskID));
        for (const task of this.running)
            if (task.isListed && !ids.has(task.id) && task.cancel === undefined && !task.isAwaited)
                this.#vanished(task);
        this.#tell();
    }

    #vanished(task) {
        if (task.by !== undefined) this.#tasks.delete(task.id);
        else if (task.ready > 0) this.end(task.id, { status: 'done', detail: ingestDetail(task) });
        else this.end(task.id, { status: 'lost', detail: lostText });
    }

    /** News were lost: what nobody waits for an answer to may be over. */
    gap() {
        for (const task of this.running)
            if (!task.isListed && !task.isAwaited) this.end(task.id, { status: 'lost', detail: gapText });
    }

    clear(id) {
        for (const task of this.all)
            if (isOver(task) && (id === undefined || task.id === id)) this.#tasks.delete(task.id);
        this.#tell();
    }
}

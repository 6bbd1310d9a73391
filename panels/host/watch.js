// What the host's windows would remember of the traffic: an open ingest dialog, reports, who asked for what.

import model from '../client/model.js';
import { findRequest, shortName } from '../client/rules.js';
import { browserIn, idsOf } from '../traffic/lines.js';

const mostReports = 200;
const mostRequests = 50;
const mostCalls = 1000;
const levels = model.forms.find(({ name }) => name === 'level').words;

/** Adds to a list or map that keeps no more than so many. */
function keep(list, item, most) {
    list.unshift(item);
    if (list.length > most) list.pop();
}

export class Watch {
    /** The dialog that is open: `{ number, task, message, bin, by }`. */
    dialog;
    /** Newest first: `{ number, us, level, text, isShown, by }`. */
    reports = [];
    /** Newest first, those that are answered at all: `{ number, what, browserID, taskID, msgID }`. */
    requests = [];
    #calls = new Map(); // dispatcher calls by message id
    #askers = new Map(); // who raised an input, by its number
    #ownIngests = new Set(); // tasks of ingests that panels asked for: no dialog began them

    hear(entries) {
        for (const entry of entries) this.#hearOne(entry);
    }

    /** @returns {object | undefined} What the dispatcher was called with for a message. */
    callOf(msgID) {
        return this.#calls.get(String(msgID).toLowerCase());
    }

    #hearOne({ number, line, cause, by, marks = [] }) {
        if (line.panel !== undefined) this.#hearRequest(number, line, by);
        if (line.callback === 'OnIngestStarted' && this.#ownIngests.has(line.args?.[0])) return;
        if (line.callback === 'OnIngestStarted' || line.callback === 'OnIngestCancelled')
            this.dialog = undefined;
        if (line.dispatcher === undefined || !Array.isArray(line.args) || marks.includes('held back')) return;
        const [task, message, ...rest] = line.args;
        const asker = this.#askers.get(cause);
        this.#remember(this.#calls, String(message).toLowerCase(), line);
        if (line.dispatcher === 'StartMediaIngest') this.#ownIngests.add(task);
        if (line.dispatcher === 'ShowIngestDialog')
            this.dialog = { number, task, message, bin: String(rest[0] ?? ''), by: asker };
        if (line.dispatcher === 'ReportPanelEvent') {
            const [level, text, isShown] = rest;
            const report = {
                number,
                us: line.us,
                level: levels[level] ?? String(level),
                text,
                isShown,
                by: asker,
            };
            keep(this.reports, report, mostReports);
        }
    }

    #hearRequest(number, line, by) {
        this.#remember(this.#askers, number, by ?? browserIn(line));
        if (findRequest(line.panel)?.answers === undefined) return;
        const ids = new Map(idsOf(line).map(({ role, id }) => [role, id]));
        const request = {
            number,
            what: shortName(line.panel),
            browserID: browserIn(line) ?? by ?? '',
            taskID: ids.get('task'),
            msgID: ids.get('message'),
        };
        keep(this.requests, request, mostRequests);
    }

    #remember(map, key, value) {
        map.set(key, value);
        if (map.size > mostCalls) map.delete(map.keys().next().value);
    }
}

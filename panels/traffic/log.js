// What passed, entry by entry, and how entries belong together. Bounded: the oldest go first.

import { collectionID, findRequest } from '../client/rules.js';
import { writeJson } from '../desk/json.js';
import { browserIn, idsOf, kindOf } from './lines.js';

/** An entry of the desk with what it means. `effects`, `last`, `answer` and `request` come to it later. */
class Row {
    constructor({ number, line, cause, by, findings = [], marks = [] }, causing) {
        const kind = kindOf(line);
        this.number = number;
        this.line = line;
        this.cause = cause;
        this.by = by;
        this.findings = findings;
        this.marks = marks;
        this.kind = kind.label;
        this.group = kind.group;
        this.lanes = kind.lanes;
        this.name = String(kind.name(line));
        this.us = line.us ?? causing?.us;
        this.ids = idsOf(line);
        this.effects = [];
        this.last = this.us; // when the last effect came
        [this.from, this.to] = this.#ends(kind, causing);
        this.isHosts = this.group === 'notification' && causing === undefined && cause === undefined;
        if (this.isHosts) this.lanes = [2, 0];
        this.asker = by ?? causing?.asker;
        /** What is looked through for words: the text as it stands, or else the whole line. */
        this.body = typeof line.data === 'string' ? line.data : writeJson(line);
        this.size = this.body.length + 512;
    }

    #ends({ lanes, to }, causing) {
        const { line } = this;
        const named = to?.(line);
        const connector = causing?.line.callback === undefined ? 'connector' : causing.to;
        const lane = (at) => [undefined, named ?? connector, 'host'][at];
        if (this.group === 'request') return [this.by ?? browserIn(line) ?? 'panel', 'connectors'];
        if (this.group === 'notification') {
            const browser = browserIn(line);
            const told = causing?.line.callback === undefined ? connectorNaming(browser) : causing.to;
            return [causing === undefined ? 'host' : told, browser || 'panels'];
        }
        return lanes.length === 0 ? [this.by ?? 'desk', ''] : [lane(lanes[0]), lane(lanes[1])];
    }

    get isInput() {
        return this.cause === undefined;
    }

    get isRemarkable() {
        return this.findings.length > 0 || this.marks.length > 0;
    }
}

const connectorNaming = (browserID) => (browserID === collectionID ? 'media collection' : 'connector');
const answersTo = ({ line }) => findRequest(line.panel)?.answers ?? [];

export class TrafficLog {
    #most;
    #mostText;
    #text = 0;
    #byNumber = new Map();
    #byID = new Map(); // sets of rows by role and id
    rows = [];
    dropped = 0;

    /** How many rows, and how many characters of text, are kept at most. */
    constructor({ most = 10000, mostText = 1 << 26 } = {}) {
        this.#most = most;
        this.#mostText = mostText;
    }

    /** @returns {Row[]} The rows that were added. */
    add(entries) {
        const added = entries.map((entry) => this.#addOne(entry));
        if (this.rows.length > this.#most || this.#text > this.#mostText) this.#drop();
        return added;
    }

    #addOne(entry) {
        const causing = this.#byNumber.get(entry.cause);
        const row = new Row(entry, causing);
        this.rows.push(row);
        this.#byNumber.set(row.number, row);
        this.#text += row.size;
        for (const { role, id } of row.ids) {
            const key = `${role} ${id}`;
            if (!this.#byID.has(key)) this.#byID.set(key, new Set());
            this.#byID.get(key).add(row);
        }
        if (causing !== undefined) {
            causing.effects.push(row);
            if (row.us > (causing.last ?? -1)) causing.last = row.us;
        }
        if (row.group === 'notification') this.#findRequest(row);
        return row;
    }

    /** What answers a request is the first notification with its message id that the model allows. */
    #findRequest(row) {
        const message = row.ids.find(({ role }) => role === 'message');
        for (const other of this.#byID.get(`message ${message?.id}`) ?? [])
            if (
                other.group === 'request' &&
                other.answer === undefined &&
                answersTo(other).includes(row.line.notification)
            ) {
                other.answer = row;
                row.request = other;
                return;
            }
    }

    /** Drops more than it must, so that it does not come to it with each entry. */
    #drop() {
        const keep = Math.floor(this.#most * 0.9);
        let count = Math.max(0, this.rows.length - keep);
        let text = this.#text - this.rows.slice(0, count).reduce((sum, { size }) => sum + size, 0);
        while (text > this.#mostText * 0.9 && count < this.rows.length - 1) text -= this.rows[count++].size;
        for (const row of this.rows.splice(0, count)) this.#forget(row);
        this.#text = text;
        this.dropped += count;
    }

    #forget(row) {
        this.#byNumber.delete(row.number);
        for (const { role, id } of row.ids) {
            const rows = this.#byID.get(`${role} ${id}`);
            rows?.delete(row);
            if (rows?.size === 0) this.#byID.delete(`${role} ${id}`);
        }
        for (const other of [row.answer, row.request])
            if (other !== undefined) {
                other.answer = undefined;
                other.request = undefined;
            }
    }

    clear() {
        this.rows = [];
        this.#byNumber.clear();
        this.#byID.clear();
        this.#text = 0;
        this.dropped = 0;
    }

    find(number) {
        return this.#byNumber.get(number);
    }

    /** @returns {Map<number, string>} How other rows belong to one, by number; what says most wins. */
    relations(row) {
        const found = new Map();
        for (const wanted of ['task', 'message'])
            for (const { id } of row.ids.filter(({ role }) => role === wanted))
                for (const { number } of this.#byID.get(`${wanted} ${id}`) ?? [])
                    found.set(number, `same ${wanted}`);
        for (const { number } of row.effects) found.set(number, 'effect');
        if (this.#byNumber.has(row.cause)) found.set(row.cause, 'cause');
        if (row.answer !== undefined) found.set(row.answer.number, 'answer');
        if (row.request !== undefined) found.set(row.request.number, 'request');
        found.delete(row.number);
        return found;
    }

    /** @returns {number[]} The inputs to which rows belong, in order, as far as they can be saved. */
    inputsOf(numbers) {
        const inputs = [...numbers]
            .map((number) => this.find(number))
            .filter((row) => row !== undefined && row.group !== 'note' && !row.isHosts)
            .map((row) => row.cause ?? row.number);
        return [...new Set(inputs)].sort((one, other) => one - other);
    }
}

/**
 * @returns {{us: number, of: string} | undefined} From a request to its answer, or else from an input to its
 *     last effect.
 */
export function durationOf(row) {
    if (!row.isInput || row.us === undefined) return undefined;
    if (row.answer?.us !== undefined) return { us: row.answer.us - row.us, of: 'answer' };
    return row.effects.length === 0 ? undefined : { us: row.last - row.us, of: 'last effect' };
}

const escaped = (text) => text.replace(/[.*+?^${}()|[\]\\]/g, '\\$&');

/**
 * @param {{hidden?: Set<string>, who?: string, words?: string, id?: string, isRemarkable?: boolean}} wanted
 * @returns {(row: Row) => boolean}
 */
export function filterFor({ hidden = new Set(), who = '', words = '', id = '', isRemarkable = false }) {
    const pattern = words === '' ? undefined : new RegExp(escaped(words), 'iu');
    const says = ({ name, kind, from, to, body, marks, findings }) =>
        [name, kind, from, to, body, ...marks, ...findings.map(({ what }) => String(what))].some((text) =>
            pattern.test(text),
        );
    return (row) =>
        !hidden.has(row.group) &&
        (!isRemarkable || row.isRemarkable) &&
        (who === '' || row.from === who || row.to === who || row.asker === who) &&
        (id === '' || row.ids.some((each) => each.id === id)) &&
        (pattern === undefined || says(row));
}

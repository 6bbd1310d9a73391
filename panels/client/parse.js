// From the text of a notification to its record. The host takes a layer of references off some notifications,
// which then need not be well-formed: there an attribute ends at the quote, and a text at the tag, behind
// which the vocabulary has something to go on with.

import { PanelError } from './errors.js';
import { put, newRecord } from './record.js';
import { valueFrom } from './values.js';
import { isDecoded } from './rules.js';
import { vocabulary } from './vocabulary.js';

const deepest = 4096; // as the host's parser has it
const startTag = /<([^\s/>=<"'!?]+)/y;
const attributeName = /\s*([^\s/>=<"']+)\s*=\s*(["'])/y;
const tagEnd = /\s*(\/?)>/y;
const anyEndTag = /<\/([^\s/>=<"']+)\s*>/y;
const space = /\s*/y;

/** @returns {RegExpExecArray | null} */
function matchAt(pattern, text, at) {
    pattern.lastIndex = at;
    return pattern.exec(text);
}

/** An element that has begun; one that nobody knows has no `element`, and nothing in it counts. */
class Open {
    constructor(name, element, outer) {
        this.name = name;
        this.element = element;
        this.outer = outer;
        this.seen = new Set();
        const lists = element?.lists?.filter((list) => list.record !== undefined) ?? [];
        /** The records that values go to: of an item its own. */
        this.records =
            lists.length === 0 ? (outer?.records ?? []) : lists.map((list) => newRecord(list.record));
        this.times = [];
        this.rates = new Map();
    }

    /** Takes a value; times wait for their rate, which may come behind them. */
    take(slot, raw, isLayerOff) {
        const value = valueFrom(slot, raw, isLayerOff);
        if (slot.form === 'time') this.times.push({ slot, value });
        else this.set(slot, slot.place.path.endsWith('/*') ? [this.name, value] : value);
        if (slot.form === 'rate') this.rates.set(slot.place.path, value);
    }

    set(slot, value) {
        const item = this.item();
        const lists = item?.element.lists;
        slot.targets.forEach((target) => {
            const at = lists?.length > 1 ? lists.findIndex((list) => list.member === target.root) : 0;
            const steps = target.steps.length === 0 ? item.element.lists[0].steps : target.steps;
            const record = target.steps.length === 0 ? item.outer.records[0] : this.records[at];
            put(record, steps, value);
            if (item !== undefined && slot.targets.length < (lists?.length ?? 1)) item.chosen ??= at;
        });
    }

    /** @returns {Open | undefined} The item that this element is, or is in. */
    item() {
        let open = this;
        while (open !== null && open.element?.lists === undefined) open = open.outer;
        return open ?? undefined;
    }

    /** What has to wait until everything is known. */
    close() {
        const ticks = new Map();
        for (const { slot, value } of this.times)
            ticks.set(slot, BigInt.asIntN(64, value * (this.rates.get(slot.place.countsAt) ?? 1n)));
        for (const [slot, length] of ticks)
            this.set(
                slot,
                BigInt.asIntN(
                    64,
                    length + (slot.beginsAt === undefined ? 0n : (ticks.get(slot.beginsAt) ?? 0n)),
                ),
            );
        const lists = this.element?.lists;
        if (lists?.[0].record === undefined) return;
        const at = lists.length > 1 ? (this.chosen ?? lists.length - 1) : 0;
        put(this.outer.records[0], lists[at].steps, this.records[at]);
    }
}

class Parser {
    /** @param {boolean} isForgiving Whether what is no markup may look like it. */
    constructor(text, isLayerOff, isForgiving) {
        this.text = text;
        this.at = 0;
        this.isLayerOff = isLayerOff;
        this.isForgiving = isForgiving;
        this.hopeless = new Set();
        this.message = newRecord('Message');
    }

    fail(what) {
        const line = this.text.slice(0, this.at).split('\n').length;
        const error = new PanelError('garbled', `the notification cannot be read: line ${line}: ${what}`);
        error.header = this.message.header;
        throw error;
    }

    parse() {
        this.at = this.text.startsWith('\ufeff') ? 1 : 0;
        this.skipToTag('the root');
        const root = new Open('', vocabulary, null);
        root.records = [this.message];
        let open = this.begin(root, vocabulary);
        for (let depth = 1; open !== root;) {
            this.skipToTag(`</${open.name}>`);
            const end = matchAt(anyEndTag, this.text, this.at);
            if (end !== null) {
                if (end[1] !== open.name) this.fail(`</${end[1]}> where </${open.name}> should be`);
                this.at = anyEndTag.lastIndex;
                open.close();
                open = open.outer;
                --depth;
                continue;
            }
            const inner = this.begin(open, undefined);
            depth += inner === open ? 0 : 1;
            open = inner;
            if (depth > deepest) this.fail(`elements are more than ${deepest} deep`);
        }
        return this.message;
    }

    /** Goes to the next tag, past comments and the like. */
    skipToTag(expected) {
        for (;;) {
            this.at = this.text.indexOf('<', this.at);
            if (this.at < 0) {
                this.at = this.text.length;
                this.fail(`it ends before ${expected}`);
            }
            const end = this.skippedEnd();
            if (end < 0) return;
            this.at = end;
        }
    }

    /** @returns {number} Where a comment, an instruction or a section ends; -1: none begins here. */
    skippedEnd() {
        for (const [begin, end] of [
            ['<!--', '-->'],
            ['<?', '?>'],
            ['<![CDATA[', ']]>'],
        ]) {
            if (!this.text.startsWith(begin, this.at)) continue;
            const at = this.text.indexOf(end, this.at + begin.length);
            if (at < 0) this.fail(`${begin} without ${end}`);
            return at + end.length;
        }
        return -1;
    }

    /** Reads a start tag, and all of an element that holds a text. @returns {Open} What is open then. */
    begin(outer, root) {
        const tag = matchAt(startTag, this.text, this.at);
        if (tag === null) this.fail('a < that begins no element');
        this.at = startTag.lastIndex;
        const name = tag[1];
        const known = root ?? outer.element?.child(name);
        const counts =
            known !== undefined && known.written && (known.many || this.mayCome(outer, name, known));
        const open = new Open(name, counts ? known : undefined, outer);
        this.readAttributes(open, known);
        const isEmpty = matchAt(tagEnd, this.text, this.at);
        if (isEmpty === null) this.fail(`the tag <${name}> does not end`);
        this.at = tagEnd.lastIndex;
        if (isEmpty[1] !== '/' && known?.slot === undefined) return open;
        const raw = isEmpty[1] === '/' ? '' : this.readText(name, outer);
        if (counts && known.slot !== undefined) this.takeText(open, outer, known.slot, raw);
        open.close();
        return outer;
    }

    /** Of an element that may stand once the first counts. */
    mayCome(outer, name, known) {
        const isFirst = !outer.seen.has(name);
        outer.seen.add(name);
        return isFirst || (known.place.most ?? 1) > 1;
    }

    /** The rate of times stands beside them, so what surrounds an element takes its text. */
    takeText(open, outer, slot, raw) {
        if (slot.place.path.endsWith('/*')) {
            if (this.mayCome(outer, open.name, open.element)) open.take(slot, raw, this.isLayerOff);
        } else if (open.element.lists === undefined) outer.take(slot, raw, this.isLayerOff);
        else open.take(slot, raw, this.isLayerOff);
    }

    readAttributes(open, known) {
        for (;;) {
            const attribute = matchAt(attributeName, this.text, this.at);
            if (attribute === null) return;
            const begin = attributeName.lastIndex;
            const end = this.valueEnd(begin, attribute[2], open, known);
            if (end < 0) this.fail(`the attribute ${attribute[1]} does not end`);
            this.at = end + 1;
            const slot = open.element?.attributes.get(attribute[1]);
            if (slot !== undefined && slot.place.written && !open.seen.has(slot)) {
                open.seen.add(slot);
                open.take(slot, this.text.slice(begin, end), this.isLayerOff);
            }
        }
    }

    valueEnd(begin, quote, open, known) {
        const first = this.text.indexOf(quote, begin);
        if (!this.isForgiving || known === undefined) return first;
        return this.firstThat(
            `${known.place.path}@`,
            first,
            (at) => this.text.indexOf(quote, at + 1),
            (at) => {
                const next = matchAt(attributeName, this.text, at + 1);
                if (next !== null) return /\s/.test(this.text[at + 1]) && known.attributes.has(next[1]);
                const end = matchAt(tagEnd, this.text, at + 1);
                return (
                    end !== null &&
                    (end[1] === '/'
                        ? this.mayFollow(tagEnd.lastIndex, open.outer)
                        : known.slot !== undefined || this.mayFollow(tagEnd.lastIndex, open, known))
                );
            },
        );
    }

    /** @returns {string} What stands before the end tag, with its references. */
    readText(name, outer) {
        return this.isForgiving ? this.readTextForgivingly(name, outer) : this.readTextStrictly(name);
    }

    readTextStrictly(name) {
        let text = '';
        for (;;) {
            const tag = this.text.indexOf('<', this.at);
            if (tag < 0) this.fail(`it ends before </${name}>`);
            text += this.text.slice(this.at, tag);
            this.at = tag;
            const end = matchAt(anyEndTag, this.text, tag);
            if (end !== null && end[1] === name) {
                this.at = anyEndTag.lastIndex;
                return text;
            }
            const skipped = this.skippedEnd();
            if (skipped < 0) this.fail(`a < in the text of <${name}>`);
            const section = this.text.slice(tag, skipped);
            this.at = skipped;
            if (section.startsWith('<![CDATA['))
                // what it holds is no markup, so it is made to be none
                text += section.slice(9, -3).replace(/&/g, '&amp;');
        }
    }

    readTextForgivingly(name, outer) {
        const begin = this.at;
        const tag = `</${name}`;
        const isEnd = (at) => matchAt(anyEndTag, this.text, at)?.[1] === name;
        const end = this.firstThat(
            `${outer.element?.place.path}/${name}`,
            this.text.indexOf(tag, begin),
            (at) => this.text.indexOf(tag, at + 1),
            (at) => isEnd(at) && this.mayFollow(anyEndTag.lastIndex, outer),
        );
        if (end < 0 || !isEnd(end)) this.fail(`it ends before ${tag}>`);
        this.at = anyEndTag.lastIndex;
        return this.text.slice(begin, end);
    }

    /** @returns {number} The first candidate that fits, else the first; nobody searches twice in vain. */
    firstThat(key, first, next, fits) {
        for (let at = this.hopeless.has(key) ? -1 : first; at >= 0; at = next(at)) if (fits(at)) return at;
        this.hopeless.add(key);
        return first;
    }

    /** @returns {boolean} Whether an element may go on with what stands here: its end, or a child of it. */
    mayFollow(at, open, element = open.element) {
        matchAt(space, this.text, at);
        const next = space.lastIndex;
        const end = matchAt(anyEndTag, this.text, next);
        if (end !== null) return end[1] === open.name;
        if (open.name === '' && next === this.text.length) return true;
        const tag = matchAt(startTag, this.text, next);
        return tag !== null && element?.child(tag[1])?.written === true;
    }
}

/**
 * @param {string} type The identifier of the notification.
 * @param {string} text
 * @returns {object} The record. Nulls in lists are gone, as they are from texts.
 * @throws {PanelError} 'garbled', with the `header` as far as it could be read.
 */
export function parseNotification(type, text) {
    if (typeof text !== 'string')
        throw new PanelError('garbled', 'the notification cannot be read: it is no text');
    if (isDecoded(type, text)) return new Parser(text, true, true).parse();
    try {
        return new Parser(text, false, false).parse();
    } catch {
        return new Parser(text, false, true).parse(); // a host may do so elsewhere
    }
}

// From a record to the text of a request.

import model from './model.js';
import { check } from './check.js';
import { PanelError } from './errors.js';
import { get } from './record.js';
import { encodedAttribute, encodedText, textOf } from './values.js';
import { vocabulary } from './vocabulary.js';

/** What an element is written of: a record with its place among others, or an entry of a map. */
class Source {
    constructor(record, order, entry) {
        this.record = record;
        this.order = order;
        this.entry = entry;
    }

    /** @returns {unknown} The value of a slot; undefined or null: none. */
    value(slot) {
        if (this.entry !== undefined) return this.entry.get(slot);
        if (slot.form === 'order') return this.order;
        if (typeof this.record !== 'object') return this.record; // of a list of simple values
        if (
            slot.targets.length === 0 ||
            (slot.flag !== undefined && (this.record[slot.flag.name] ?? false) !== slot.flag.value)
        )
            return undefined;
        return get(this.record, slot.targets[0].steps);
    }
}

class Builder {
    constructor() {
        this.places = new Set();
    }

    /** @returns {string} The attributes that have a value. */
    attributes(element, source) {
        let text = '';
        for (const [name, slot] of element.attributes) {
            const value = slot.place.read ? this.text(slot, source) : undefined;
            if (value !== undefined) text += ` ${name}="${encodedAttribute(value)}"`;
        }
        return text;
    }

    text(slot, source) {
        const value = source.value(slot);
        const text = value === undefined || value === null ? undefined : textOf(slot, value);
        if (text !== undefined && text !== '') this.places.add(slot.place.path);
        return text;
    }

    /** @returns {string} What is in an element. */
    children(element, source) {
        const rates = this.rates(element, source);
        let text = '';
        for (const child of element.children.values()) {
            if (!child.read) continue;
            if (child.many) text += this.items(child, source);
            else if (child.slot?.form === 'time')
                text += this.time(child, source, rates.get(child.slot.place.countsAt));
            else if (child.slot?.form === 'rate')
                text += rates.has(child.place.path) ? this.rate(child, rates.get(child.place.path)) : '';
            else text += this.element(child, source);
        }
        return text;
    }

    /** @returns {Map<string, bigint>} Ticks for a frame by the place of the rate; one where times lack it. */
    rates(element, source) {
        const rates = new Map();
        for (const { slot, place } of element.children.values()) {
            if (slot?.form !== 'rate' || !place.read) continue;
            const isNeeded = [...element.children.values()].some(
                (other) => other.place.countsAt === place.path && (source.value(other.slot) ?? null) !== null,
            );
            const rate = source.value(slot) || (isNeeded ? 1n : undefined);
            if (rate !== undefined) rates.set(place.path, rate);
        }
        return rates;
    }

    rate(element, rate) {
        this.places.add(element.place.path);
        return `<${element.name}>${textOf(element.slot, rate)}</${element.name}>`;
    }

    time(element, source, rate) {
        const ticks = source.value(element.slot) ?? null;
        if (ticks === null) return '';
        if (ticks % rate !== 0n)
            throw new PanelError(
                'invalid',
                `${element.slot.place.member} is no whole number of frames at its rate`,
            );
        this.places.add(element.place.path);
        return `<${element.name}>${ticks / rate}</${element.name}>`;
    }

    /** @returns {string} An element with what it holds; nothing when that is nothing. */
    element(element, source, name = element.name) {
        const attributes = this.attributes(element, source);
        const text = element.slot === undefined ? undefined : this.text(element.slot, source);
        const content = text === undefined ? this.children(element, source) : encodedText(text);
        if (attributes === '' && content === '' && text === undefined && element.lists === undefined)
            return '';
        this.places.add(element.place.path);
        return content === '' ? `<${name}${attributes}/>` : `<${name}${attributes}>${content}</${name}>`;
    }

    /** @returns {string} An element for each entry of a list. */
    items(element, source) {
        if (element.place.path.endsWith('/*'))
            return (source.value(element.slot) ?? [])
                .map(([name, value]) => this.property(element, name, value))
                .join('');
        const [list] = element.lists;
        if (/^map:/.test(list.type))
            return entriesOf(element, source.record)
                .map((entry) => this.element(element, new Source(undefined, undefined, entry)))
                .join('');
        const entries = get(source.record, list.steps) ?? [];
        return entries
            .map((entry, i) => (entry === null ? '' : this.element(element, new Source(entry, i + 1))))
            .join('');
    }

    property(element, name, value) {
        if (!/^[\p{L}_][\p{L}\p{N}._-]*$/u.test(name))
            throw new PanelError('invalid', `${JSON.stringify(name)} cannot be the name of a property`);
        return this.element(
            element,
            new Source(undefined, undefined, new Map([[element.slot, value]])),
            name,
        );
    }
}

/** The slots of an item, its children's included. */
const slotsOf = (element) => [
    ...element.attributes.values(),
    ...[...element.children.values()].flatMap((child) => slotsOf(child)),
];

/** @returns {Map<object, string>[]} What the slots of each item hold, of a list that is a map. */
function entriesOf(element, message) {
    const slots = slotsOf(element);
    const keys = slots.filter((slot) => slot.form === 'guid');
    const values = slots.filter((slot) => slot.form !== 'guid');
    return keys.length === 1
        ? simpleEntries(message, keys[0], values)
        : nestedEntries(message, keys, values[0]);
}

/** Some values of one key come from several maps. */
function simpleEntries(message, key, slots) {
    const entries = new Map();
    for (const slot of slots)
        for (const [id, value] of message[slot.place.member] ?? []) {
            if (!entries.has(id)) entries.set(id, new Map([[key, id]]));
            entries.get(id).set(slot, value);
        }
    return [...entries.values()];
}

/** What the value is without its text shows which key is outside. */
function nestedEntries(message, keys, slot) {
    const [[outerSample]] = slot.place.missing;
    const outer = keys.find((key) => key.place.sample === outerSample);
    const inner = keys.find((key) => key !== outer);
    return (message[slot.place.member] ?? []).flatMap(([outerID, values]) =>
        values.map(
            ([innerID, value]) =>
                new Map([
                    [outer, outerID],
                    [inner, innerID],
                    [slot, value],
                ]),
        ),
    );
}

/**
 * @param {object} message A record, whose members may be left out.
 * @returns {{text: string, places: Set<string>}} The text, and the places that have something in it.
 * @throws {PanelError} 'invalid', with the member that is wrong.
 */
export function build(message) {
    check(message, 'record:Message', '');
    const builder = new Builder();
    const content = builder.children(vocabulary, new Source(message));
    return { text: `<${model.requestRoot}>${content}</${model.requestRoot}>`, places: builder.places };
}

/** @returns {string} The text alone. */
export const buildRequest = (message) => build(message).text;

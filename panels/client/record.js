// Records as the host constructs them, and members put into them.

import { zeroGuid } from './guid.js';
import model from './model.js';
import { membersOf, recordIn, steps } from './vocabulary.js';

/** What integers are without their element, where that is not 0. */
const initials = new Map();
for (const place of model.places)
    for (const member of place.member === undefined ? [] : [place.member, ...(place.also ?? [])]) {
        const { record, name, type } = steps('Message', member).at(-1);
        if (type === 'integer') initials.set(`${record}.${name}`, place.form === 'boolean' ? -1 : place.missing);
    }

function initial(record, { name, type }) {
    const known = initials.get(`${record}.${name}`);
    if (known !== undefined) return known;
    if (/^(?:list|map):/.test(type)) return [];
    if (/^(?:nullable:|time$)/.test(type)) return null;
    const inner = recordIn(type);
    return inner === undefined
        ? { string: '', boolean: false, integer: 0, guid: zeroGuid, rate: 0n }[type]
        : newRecord(inner);
}

/** @returns {object} With every member, of the message with its header alone. */
export function newRecord(record) {
    if (record === 'Message') return { header: newRecord('Header') };
    return Object.fromEntries(
        [...membersOf(record)].map(([name, type]) => [name, initial(record, { name, type })]),
    );
}

/** Puts a value where steps of a slot or a list lead; at the end of what is there when that is a list. */
export function put(record, path, value) {
    for (const step of path.slice(0, -1)) record = record[step.name] ??= newRecord(recordIn(step.type));
    const { name, type } = path.at(-1);
    if (/^(?:list|map):/.test(type)) (record[name] ??= []).push(value);
    else record[name] = type === 'nullable:object' ? { [markerText]: value } : value;
}

/** @returns {unknown} What is where steps lead; undefined without the records on the way. */
export function get(record, path) {
    return path.reduce((at, step) => at?.[step.name], record);
}

/** The one object of the host's with a value in texts, a marker, has it under this name. */
const markerText = 'propertyXML';

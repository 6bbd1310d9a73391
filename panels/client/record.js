// Records as the host constructs them, and members put into them.

import { zeroGuid } from './guid.js';
import { membersOf, recordIn, vocabulary } from './vocabulary.js';

const initials = new Map();

/** What members are without their element, where that is something else than the usual for their type. */
function collectInitials(element, record, isItem) {
    for (const { slot, ...item } of [...element.attributes.values()]
        .map((slot) => ({ slot }))
        .concat([...element.children.values()])) {
        const steps = slot?.targets[0]?.steps;
        if (isItem && steps?.length === 1) initials.set(`${record}.${steps[0].name}`, initialOf(slot));
        if (item.children !== undefined && item.place.sameAs === undefined)
            collectInitials(
                item,
                item.lists?.[0].record ?? record,
                isItem || item.lists?.[0].record !== undefined,
            );
    }
}

function initialOf(slot) {
    if (slot.form === 'boolean' && slot.type === 'integer') return -1;
    return slot.type === 'integer' ? slot.place.missing : undefined;
}

collectInitials(vocabulary, 'Message', false);

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
export function put(record, steps, value) {
    for (const step of steps.slice(0, -1)) record = record[step.name] ??= newRecord(recordIn(step.type));
    const { name, type } = steps.at(-1);
    if (/^(?:list|map):/.test(type)) (record[name] ??= []).push(value);
    else record[name] = type === 'nullable:object' ? { [markerText]: value } : value;
}

/** @returns {unknown} What is where steps lead; undefined without the records on the way. */
export function get(record, steps) {
    return steps.reduce((at, step) => at?.[step.name], record);
}

/** The one object of the host's with a value in texts, a marker, has it under this name. */
const markerText = 'propertyXML';

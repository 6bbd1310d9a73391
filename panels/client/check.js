// Whether something is a record, before a text is made of it: what is no record must not get lost silently.

import { PanelError } from './errors.js';
import { membersOf, recordIn } from './vocabulary.js';
import { isGuid } from './values.js';

const deepest = 200; // lists in lists: far more than work has, far less than the stack takes; and cycles end

const isWhole = (value) => typeof value === 'bigint' && BigInt.asIntN(64, value) === value;

/** What values of simple types are, and how to say so. */
const simple = {
    string: ['a string', (value) => typeof value === 'string'],
    boolean: ['a boolean', (value) => typeof value === 'boolean'],
    integer: ['an integer of 32 bits', (value) => Number.isInteger(value) && Math.abs(value) <= 0x80000000],
    guid: ['a GUID', (value) => typeof value === 'string' && isGuid(value)],
    time: ['null or a bigint of 64 bits', (value) => value === null || isWhole(value)],
    rate: ['a bigint of 64 bits', isWhole],
    object: ['an object', () => true],
};

function fail(where, what) {
    throw new PanelError('invalid', `${where || 'the message'} is ${what}`);
}

/** @throws {PanelError} 'invalid', with the member that is wrong. */
export function check(value, type, where, depth = 0) {
    if (depth > deepest) fail(where.slice(0, 80), `more than ${deepest} lists deep`);
    if (type.startsWith('nullable:'))
        return value === null || check(value, type.slice('nullable:'.length), where, depth);
    const record = /^record:/.test(type) ? recordIn(type) : undefined;
    if (record !== undefined) return checkRecord(value, record, where, depth);
    const [, kind, inner] = /^(list|map):(.*)/.exec(type) ?? [];
    if (kind === undefined) return simple[type][1](value) || fail(where, `not ${simple[type][0]}`);
    if (!Array.isArray(value)) fail(where, 'not an array');
    value.forEach((entry, i) =>
        (kind === 'list' ? check : checkPair)(entry, inner, `${where}[${i}]`, depth + 1),
    );
}

function checkPair(pair, types, where, depth) {
    const [key, ...value] = types.split(':');
    if (!Array.isArray(pair) || pair.length !== 2) fail(where, 'not a pair of a key and a value');
    check(pair[0], key, `${where}[0]`, depth);
    check(pair[1], value.join(':'), `${where}[1]`, depth);
}

function checkRecord(value, record, where, depth) {
    if (typeof value !== 'object' || value === null) fail(where, 'not an object');
    for (const [name, member] of Object.entries(value)) {
        const type = membersOf(record).get(name);
        const path = where === '' ? name : `${where}.${name}`;
        if (type === undefined) fail(path, `no member of ${record}`);
        if (member !== undefined) check(member, type, path, depth);
    }
}

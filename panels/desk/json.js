// JSON with what JSON.parse lacks: where a fault is, integers of 64 bits, no doubled keys.

const space = /[ \t\n\r]*/y;
const numeral = /-?(?:0|[1-9][0-9]*)(?:\.[0-9]+)?(?:[eE][+-]?[0-9]+)?/y;
const string = /"(?:[^"\\\u0000-\u001f]|\\(?:["\\/bfnrt]|u[0-9a-fA-F]{4}))*"/y;
const words = [
    ['true', true],
    ['false', false],
    ['null', null],
];
const deepest = 500;

/** A fault of a text, with its place: line and column count from 1 on, `at` is the place in the text. */
export class JsonFault extends Error {
    constructor(text, at, what) {
        const before = text.slice(0, at).split('\n');
        super(`line ${before.length}, column ${before.at(-1).length + 1}: ${what}`);
        this.name = 'JsonFault';
        this.at = at;
    }
}

class Reader {
    constructor(text) {
        this.text = text;
        this.at = 0;
    }

    fail(what, at = this.at) {
        throw new JsonFault(this.text, at, what);
    }

    match(pattern) {
        pattern.lastIndex = this.at;
        const match = pattern.exec(this.text);
        if (match !== null) this.at = pattern.lastIndex;
        return match?.[0];
    }

    takes(character) {
        this.match(space);
        if (this.text[this.at] !== character) return false;
        this.at += 1;
        return true;
    }

    value(depth) {
        if (depth > deepest) this.fail(`more than ${deepest} levels deep`);
        this.match(space);
        if (this.takes('{')) return this.object(depth);
        if (this.takes('[')) return this.array(depth);
        if (this.text[this.at] === '"') return this.string();
        const word = words.find(([name]) => this.text.startsWith(name, this.at));
        if (word !== undefined) {
            this.at += word[0].length;
            return word[1];
        }
        const number = this.match(numeral);
        if (number !== undefined) return numberOf(number);
        return this.fail(
            this.at >= this.text.length ? 'the text ends where a value should be' : 'no value begins here',
        );
    }

    string() {
        const begin = this.at;
        const text = this.match(string);
        if (text !== undefined) return JSON.parse(text);
        const line = /[^\n]*/y;
        line.lastIndex = begin;
        return this.fail(
            /^"(?:[^"\\]|\\.)*"/.test(line.exec(this.text)[0])
                ? 'a string with a character or an escape that JSON does not have'
                : 'a string that does not end on its line',
        );
    }

    array(depth) {
        const values = [];
        if (this.takes(']')) return values;
        for (;;) {
            values.push(this.value(depth + 1));
            if (this.takes(']')) return values;
            if (!this.takes(',')) this.fail('a comma or ] is missing');
        }
    }

    object(depth) {
        const members = new Map();
        if (this.takes('}')) return {};
        for (;;) {
            this.match(space);
            if (this.text[this.at] !== '"') this.fail('a key in quotes is missing');
            const begin = this.at;
            const key = this.string();
            if (members.has(key)) this.fail(`the key "${key}" stands here twice`, begin);
            if (!this.takes(':')) this.fail('a colon is missing');
            members.set(key, this.value(depth + 1));
            if (this.takes('}')) return Object.fromEntries(members);
            if (!this.takes(',')) this.fail('a comma or } is missing');
        }
    }
}

function numberOf(text) {
    const number = Number(text);
    return Number.isInteger(number) && !Number.isSafeInteger(number) && /^-?[0-9]+$/.test(text)
        ? BigInt(text)
        : number;
}

/**
 * @param {string} text
 * @returns {unknown} Integers that a number does not hold are bigint.
 * @throws {JsonFault}
 */
export function readJson(text) {
    const reader = new Reader(text);
    const value = reader.value(0);
    reader.match(space);
    if (reader.at < text.length) reader.fail('something stands behind the end');
    return value;
}

/** @returns {unknown} As `readJson` has it; what a machine wrote without such integers is read faster. */
export const readFrame = (text) => (/[:,[]\s*-?[0-9]{16}/.test(text) ? readJson(text) : JSON.parse(text));

/** @returns {string} JSON, in which a bigint is a number; what is short stays on one line. */
export function writeJson(value, { width = 0 } = {}) {
    if (width === 0) return flat(value);
    const write = (inner, indent) => {
        const line = flat(inner);
        if (typeof inner !== 'object' || inner === null || indent.length + line.length <= width) return line;
        const deeper = `${indent}  `;
        const parts = Array.isArray(inner)
            ? inner.map((item) => write(item ?? null, deeper))
            : entries(inner).map(([key, item]) => `${JSON.stringify(key)}: ${write(item, deeper)}`);
        const [begin, end] = Array.isArray(inner) ? '[]' : '{}';
        return `${begin}\n${parts.map((part) => deeper + part).join(',\n')}\n${indent}${end}`;
    };
    return write(value, '');
}

const entries = (value) => Object.entries(value).filter(([, item]) => item !== undefined);

function flat(value) {
    if (typeof value === 'bigint') return String(value);
    if (typeof value !== 'object' || value === null) return JSON.stringify(value) ?? 'null';
    if (Array.isArray(value)) return `[${value.map(flat).join(', ')}]`;
    const members = entries(value).map(([key, item]) => `${JSON.stringify(key)}: ${flat(item)}`);
    return `{${members.join(', ')}}`;
}
